#include <gtest/gtest.h>

#include <cmath>

#include "runtime/patches/Easing.h"
#include "runtime/TimeLineCurve.h"
#include "support/GraphBuilder.h"

namespace {

using runtime::Value;
using runtime::patches::eased;
using runtime::TimeLineCurve;
using support::GraphBuilder;
using Dictionary = GraphBuilder::Dictionary;
using Renderer = std::unique_ptr<runtime::CompositionRenderer>;

/// A renderer of one node, with one output published as "result" and the inputs under their keys.
Renderer single(const QString& className, const QString& output, const Dictionary& inputs,
                const Dictionary& state = {}, const QStringList& published = {}) {
  GraphBuilder g;
  const QString node = g.node(className, state, inputs);
  g.publishOutput(node, output, "result");
  for (const QString& port : published) g.publishInput(node, port, port);
  return g.renderer();
}

double at(const Renderer& r, double time, const QString& key = "result") {
  (void)r->renderAtTime(time, {16, 9});
  return r->valueForOutputKey(key).toNumber();
}

TEST(Easing, curvesMeetTheirEndsAndTheirFormulas) {
  for (quint64 curve = 0; curve <= 13; ++curve) {
    EXPECT_EQ(eased(curve, 0), 0);
    EXPECT_EQ(eased(curve, 1), 1);
    EXPECT_EQ(eased(curve, -3), 0);
    EXPECT_EQ(eased(curve, std::nan("")), 0);
    double last = 0;
    for (int i = 1; i <= 100; ++i) {
      const double now = eased(curve, i / 100.0);
      EXPECT_GE(now, last) << "curve " << curve << " at " << i;
      last = now;
    }
  }
  const double quarter[] = {0.25,
                            0.0625,
                            0.4375,
                            0.125,
                            0.015625,
                            0.578125,
                            0.0625,
                            std::exp2(-7.5),
                            1 - std::exp2(-2.5),
                            std::exp2(-5) / 2,
                            1 - std::cos(M_PI / 8),
                            std::sin(M_PI / 8),
                            (1 - std::cos(M_PI / 4)) / 2};
  for (quint64 curve = 0; curve <= 12; ++curve)
    EXPECT_NEAR(eased(curve, 0.25), quarter[curve], 1e-12) << "curve " << curve;
}

TEST(WavePatches, everyWaveAtItsLandmarks) {
  struct Row {
    int type;
    double values[4];  // at 0, ¼, ½ and ¾ of the period
  };
  const Row rows[] = {{0, {0, 1, 0, -1}},  {1, {1, 0, -1, 0}},      {2, {-1, 0, 1, 0}},
                      {3, {-1, -1, 1, 1}}, {4, {-1, -0.5, 0, 0.5}}, {5, {1, 0.5, 0, -0.5}},
                      {6, {-1, 1, 1, 1}}};
  for (const Row& row : rows) {
    const Renderer r = single("QCLFO", "outputValue",
                              {{"inputType", row.type},
                               {"inputPeriod", 2.0},
                               {"inputOffset", 3.0},
                               {"inputAmplitude", 2.0},
                               {"inputPWMRatio", 0.25}});
    for (int i = 0; i < 4; ++i)
      EXPECT_NEAR(at(r, 4 + i * 0.5), 3 + 2 * row.values[i], 1e-12) << row.type << " " << i;
  }
  // Cos a quarter later is Sin.
  EXPECT_NEAR(at(single("QCLFO", "outputValue", {{"inputType", 1}, {"inputPhase", 90.0}}), 0.2),
              std::sin(0.4 * M_PI), 1e-12);
  const Renderer still = single("QCLFO", "outputValue", {{"inputType", 1}, {"inputPeriod", 0.0}});
  EXPECT_EQ(at(still, 5), 1);
  const Renderer random = single("QCLFO", "outputValue", {{"inputType", 7}}, {{"randomSeed", 4}});
  const double first = at(random, 3.1);
  EXPECT_EQ(at(random, 3.9), first);
  EXPECT_NE(at(random, 4.1), first);
}

TEST(InterpolationPatches, repeatModes) {
  struct Row {
    int repeat;
    double values[5];  // at 1, 2, 3, 5 and 9 seconds of a duration of 2
  };
  const Row rows[] = {{0, {15, 20, 20, 20, 20}},
                      {1, {15, 10, 15, 15, 15}},
                      {2, {15, 20, 15, 15, 15}},
                      {3, {15, 20, 15, 10, 10}}};
  const double times[] = {1, 2, 3, 5, 9};
  for (const Row& row : rows) {
    const Renderer r = single("QCInterpolation", "outputValue",
                              {{"inputValue1", 10.0},
                               {"inputValue2", 20.0},
                               {"inputDuration", 2.0},
                               {"inputRepeat", row.repeat}});
    for (int i = 0; i < 5; ++i)
      EXPECT_DOUBLE_EQ(at(r, times[i]), row.values[i]) << row.repeat << " at " << times[i];
  }
  const Dictionary eased{{"inputInterpolation", 4}, {"inputValue2", 8.0}};
  EXPECT_DOUBLE_EQ(at(single("QCInterpolation", "outputValue", eased), 0.5), 1);
  EXPECT_EQ(at(single("QCInterpolation", "outputValue", {{"inputDuration", 0.0}}), 0), 1);
}

TEST(InterpolationPatches, smoothRestartsFromWhereItIs) {
  const Renderer r = single("QCSmooth", "outputValue",
                            {{"inputIncreasingDuration", 2.0}, {"inputDecreasingDuration", 0.0}},
                            {}, {"inputValue"});
  r->setValueForInputKey(4.0, "inputValue");
  EXPECT_EQ(at(r, 0), 4) << "starts at its input";
  r->setValueForInputKey(8.0, "inputValue");
  EXPECT_EQ(at(r, 1), 4);
  EXPECT_EQ(at(r, 2), 6);
  r->setValueForInputKey(10.0, "inputValue");
  EXPECT_EQ(at(r, 2.5), 7);
  EXPECT_EQ(at(r, 3.5), 8.5);
  EXPECT_EQ(at(r, 9), 10);
  r->setValueForInputKey(1.0, "inputValue");
  EXPECT_EQ(at(r, 10), 1) << "no duration: at once";
}

TEST(TimePatches, stopWatchCountsBetweenItsSignals) {
  const Renderer r = single("QCClock", "outputTime", {}, {},
                            {"inputStartSignal", "inputStopSignal", "inputResetSignal"});
  const auto pulse = [&](const QString& key, bool on) { r->setValueForInputKey(on, key); };
  EXPECT_EQ(at(r, 1), 0);
  pulse("inputStartSignal", true);
  EXPECT_EQ(at(r, 2), 0);
  EXPECT_EQ(at(r, 4), 2);
  pulse("inputStopSignal", true);
  EXPECT_EQ(at(r, 5), 3);
  EXPECT_EQ(at(r, 6), 3);
  pulse("inputStartSignal", false);
  EXPECT_EQ(at(r, 7), 3);
  pulse("inputStartSignal", true);
  pulse("inputResetSignal", true);
  EXPECT_EQ(at(r, 8), 0);
  EXPECT_EQ(at(r, 9), 1) << "a reset does not stop it";
  EXPECT_EQ(at(r, 3), 0) << "time ran backwards: anew, still running";
}

TEST(TimePatches, signalFiresForOneFrame) {
  // Frames at 0, 0.5, … 3 seconds; x = 1.
  const std::pair<int, const char*> rows[] = {
      {0, "0010000"}, {1, "0010101"}, {2, "1010101"}, {3, "0000000"}, {4, "1000000"}};
  for (const auto& [mode, expected] : rows) {
    const Renderer r =
        single("QCSignal", "outputSignal", {{"inputMode", mode}, {"inputParam", 1.0}});
    std::string seen;
    for (int i = 0; i < 7; ++i) seen += at(r, i * 0.5) != 0 ? '1' : '0';
    EXPECT_EQ(seen, expected) << "mode " << mode;
  }
  const Renderer changes =
      single("QCSignal", "outputSignal", {{"inputMode", 3}}, {}, {"inputParam"});
  EXPECT_EQ(at(changes, 0), 0);
  changes->setValueForInputKey(7.0, "inputParam");
  EXPECT_EQ(at(changes, 0), 1);
  EXPECT_EQ(at(changes, 0), 0) << "also when the time stands still";
}

TEST(TimePatches, systemTimeIsTheWallClockOfTheFrame) {
  const Renderer r = single("QCSystemTime", "outputTime", {});
  runtime::FrameArguments arguments;
  arguments.wallClock = QDateTime(QDate(2001, 1, 2), QTime(0, 0, 0, 250), Qt::UTC);
  (void)r->renderAtTime(5, {16, 9}, arguments);
  EXPECT_DOUBLE_EQ(r->valueForOutputKey("result").toNumber(), 86400.25);
}

TEST(DifferentialPatches, integrateAndDerive) {
  const Renderer sum = single("QCDifferentialValue:integrator", "outputValue",
                              {{"inputValue", 3.0}}, {}, {"inputResetSignal"});
  EXPECT_EQ(at(sum, 1), 0);
  EXPECT_EQ(at(sum, 3), 6);
  sum->setValueForInputKey(true, "inputResetSignal");
  EXPECT_EQ(at(sum, 4), 0);
  EXPECT_EQ(at(sum, 5), 3);
  EXPECT_EQ(at(sum, 2), 0);

  const Renderer slope =
      single("QCDifferentialValue:derivator", "outputValue", {}, {}, {"inputValue"});
  EXPECT_EQ(at(slope, 0), 0);
  slope->setValueForInputKey(8.0, "inputValue");
  EXPECT_EQ(at(slope, 2), 4);
  EXPECT_EQ(at(slope, 2), 4) << "the same moment keeps its answer";
  EXPECT_EQ(at(slope, 3), 0);
}

/// The value where a finely sampled Bézier passes the time.
double bruteForce(const TimeLineCurve::KeyFrame& a, const TimeLineCurve::KeyFrame& b, double time) {
  const auto mix = [](double u, double p0, double p1, double p2, double p3) {
    const double r = 1 - u;
    return r * r * r * p0 + 3 * r * r * u * p1 + 3 * r * u * u * p2 + u * u * u * p3;
  };
  double best = 0;
  double nearest = 1e9;
  for (int i = 0; i <= 200'000; ++i) {
    const double u = i / 200'000.0;
    const double t =
        mix(u, a.place.time, a.place.time + a.right.time, b.place.time + b.left.time, b.place.time);
    if (std::abs(t - time) >= nearest) continue;
    nearest = std::abs(t - time);
    best = mix(u, a.place.value, a.place.value + a.right.value, b.place.value + b.left.value,
               b.place.value);
  }
  return best;
}

TEST(TimeLineCurve, agreesWithASampledBezier) {
  const TimeLineCurve::KeyFrame pairs[][2] = {{{{1, 2}, {}, {0.5, 0}}, {{2, 5}, {-0.5, 0}, {}}},
                                              {{{1, 2}, {}, {1, 3}}, {{2, 5}, {-1, -3}, {}}},
                                              {{{0, 0}, {}, {0.9, 0}}, {{2.3, 1}, {0, 0}, {}}},
                                              {{{0, 10}, {}, {0, 0}}, {{4, -10}, {-3, 5}, {}}},
                                              {{{0, 0}, {}, {0.1, 4}}, {{1, 0}, {-0.2, -4}, {}}}};
  for (const auto& pair : pairs) {
    const TimeLineCurve curve({pair[0], pair[1]});
    const double start = pair[0].place.time;
    const double length = pair[1].place.time - start;
    for (int i = 1; i < 20; ++i)
      EXPECT_NEAR(curve.valueAt(start + length * i / 20),
                  bruteForce(pair[0], pair[1], start + length * i / 20), 2e-3)
          << start << " " << i;
  }
  const TimeLineCurve ease({{{0, 0}, {}, {0.5, 0}}, {{1, 1}, {-0.5, 0}, {}}});
  EXPECT_NEAR(ease.valueAt(0.5), 0.5, 1e-12);
}

TEST(TimeLineCurve, jumpsHoldsAndOddities) {
  const TimeLineCurve steps(
      {{{2, 3}, {}, {}}, {{1, 0}, {}, {}}, {{2, 7}, {}, {0.3, 0}}, {{3, 7}, {-0.2, 0}, {}}});
  EXPECT_EQ(steps.valueAt(0), 0);
  EXPECT_EQ(steps.valueAt(1.5), 1.5);
  EXPECT_NEAR(steps.valueAt(2 - 1e-6), 3, 1e-5) << "just before a jump: the first of the two";
  EXPECT_EQ(steps.valueAt(2 - 1e-9), 7) << "files hold times in single precision";
  EXPECT_EQ(steps.valueAt(2), 7) << "at the jump: the last";
  for (int i = 0; i < 100; ++i) EXPECT_EQ(steps.valueAt(2 + i / 100.0), 7) << "exactly constant";
  EXPECT_EQ(steps.valueAt(9), 7);
  EXPECT_EQ(TimeLineCurve({}).valueAt(1), 0);
  const double nan = std::nan("");
  const TimeLineCurve odd(
      {{{nan, 1}, {}, {}}, {{0, 1}, {}, {nan, nan}}, {{1, 2}, {-1e300, 0}, {}}});
  EXPECT_EQ(odd.valueAt(2), 2);
  (void)odd.valueAt(0.5);
  EXPECT_TRUE(
      std::isfinite(TimeLineCurve({{{0, 1}, {}, {50, 0}}, {{1, 2}, {-70, 0}, {}}}).valueAt(0.5)));
}

TEST(TimeLinePatch, readsBothStoredShapes) {
  const auto keyFrame = [](double time, const foundation::PropertyValue& value) {
    Dictionary place{{"time", time}};
    if (!value.isNull()) place.insert("value", value);
    return foundation::PropertyValue(Dictionary{{"kf", place}});
  };
  const foundation::PropertyArray curves{
      Dictionary{{"identifier", u"A"},
                 {"portNumber", 3},
                 {"keyFrames", foundation::PropertyArray{keyFrame(1, {}), keyFrame(3, 4)}}}};
  for (const foundation::PropertyValue& stored :
       {foundation::PropertyValue(curves),
        foundation::PropertyValue(Dictionary{{"timeLines", curves}})}) {
    const Renderer r = single("QCTimeLine", "output_3", {}, {{"timeLines", stored}});
    EXPECT_EQ(r->outputAttributes("result")->label, "A");
    EXPECT_EQ(at(r, 0), 0) << "a missing value is 0";
    EXPECT_EQ(at(r, 2), 2);
    EXPECT_EQ(at(r, 5), 4);
  }
}

TEST(TimeBases, localStartsWithTheEnableAndExternalFollowsItsInput) {
  GraphBuilder content;
  const QString time = content.node("QCTime");
  const QString local = content.node("QCTime", {{"timebase", u"local"}});
  const QString sprite = content.node("QCSprite");
  content.connect(time, "outputTime", sprite, "inputX");
  content.connect(local, "outputTime", sprite, "inputY");
  for (const bool external : {false, true}) {
    GraphBuilder g;
    const QString macro =
        g.macro("QCPatch", content, {}, {{"timebase", external ? u"external" : u"local"}});
    g.publishInput(macro, "_enable", "enable");
    if (external) g.publishInput(macro, "_time", "time");
    const auto r = g.renderer();
    const auto place = [&](double now) {
      const runtime::DrawList list = r->renderAtTime(now, {16, 9});
      const auto* quad =
          list.items.empty() ? nullptr : std::get_if<runtime::QuadItem>(&list.items.front());
      return quad ? quad->matrix.map(QVector3D()) : QVector3D(-1, -1, -1);
    };
    if (external) {
      r->setValueForInputKey(0.25, "time");
      EXPECT_EQ(place(9), QVector3D(0.25F, 0, 0));
      r->setValueForInputKey(-4.0, "time");
      EXPECT_EQ(place(9), QVector3D(0, 0, 0)) << "never negative";
      continue;
    }
    EXPECT_EQ(place(5), QVector3D(0, 0, 0));
    EXPECT_EQ(place(6), QVector3D(1, 1, 0));
    r->setValueForInputKey(false, "enable");
    EXPECT_EQ(place(7).x(), -1);
    EXPECT_EQ(place(8).x(), -1);
    r->setValueForInputKey(true, "enable");
    EXPECT_EQ(place(9), QVector3D(0, 0, 0)) << "starts again with the enable";
    EXPECT_EQ(place(9.5), QVector3D(0.5F, 0.5F, 0));
  }
}

}  // namespace
