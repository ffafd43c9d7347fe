#include <gtest/gtest.h>

#include "support/GraphBuilder.h"

namespace {

using runtime::Value;
using support::GraphBuilder;
using Dictionary = GraphBuilder::Dictionary;
using Renderer = std::unique_ptr<runtime::CompositionRenderer>;

void frame(const Renderer& r, double time) {
  (void)r->renderAtTime(time, {16, 9});
}

TEST(MemoryPatches, counterCountsEdgesAndStaysAboveZero) {
  GraphBuilder g;
  const QString c = g.node("QCCounter");
  for (const char* key : {"inputSignal", "inputSignalDown", "inputSignalReset"})
    g.publishInput(c, key, key);
  g.publishOutput(c, "outputCount", "count");
  const auto r = g.renderer();
  double time = 0;
  const auto after = [&](bool up, bool down, bool reset) {
    r->setValueForInputKey(up, "inputSignal");
    r->setValueForInputKey(down, "inputSignalDown");
    r->setValueForInputKey(reset, "inputSignalReset");
    frame(r, time += 0.1);
    return r->valueForOutputKey("count").toIndex();
  };
  EXPECT_EQ(after(true, false, false), 1U) << "a signal that is true from the start counts";
  EXPECT_EQ(after(true, false, false), 1U);
  EXPECT_EQ(after(false, true, false), 0U);
  EXPECT_EQ(after(false, false, false), 0U);
  EXPECT_EQ(after(false, true, false), 0U) << "never below zero";
  EXPECT_EQ(after(true, false, false), 1U);
  EXPECT_EQ(after(false, false, false), 1U);
  EXPECT_EQ(after(true, false, true), 0U) << "the reset wins";
}

TEST(MemoryPatches, pulseAndWatcherLastOneFrame) {
  for (int mode = 0; mode < 3; ++mode) {
    GraphBuilder g;
    const QString p = g.node("QCPulse", {}, {{"inputMode", mode}});
    const QString w = g.node("QCWatcher", {{"portClass", u"QCBooleanPort"}});
    const QString s = g.node("QCSplitter", {{"portClass", u"QCBooleanPort"}});
    g.connect(s, "output", p, "inputSignal");
    g.connect(s, "output", w, "input");
    g.publishInput(s, "input", "in");
    g.publishOutput(p, "outputSignal", "pulse");
    g.publishOutput(w, "outputSignal", "changed");
    const auto r = g.renderer();
    std::string pulses, changes;
    for (const bool in : {false, true, true, false, false}) {
      r->setValueForInputKey(in, "in");
      frame(r, 1);  // the time stands still: pulses end all the same
      pulses += r->valueForOutputKey("pulse").toBoolean() ? '1' : '0';
      changes += r->valueForOutputKey("changed").toBoolean() ? '1' : '0';
    }
    EXPECT_EQ(pulses, mode == 0 ? "01000" : mode == 1 ? "00010" : "01010");
    EXPECT_EQ(changes, "01010");
  }
}

TEST(MemoryPatches, sampleAndHold) {
  GraphBuilder g;
  const QString h = g.node("QCSampleHold");
  for (const char* key : {"inputSampleValue", "inputSampling", "inputResetSignal"})
    g.publishInput(h, key, key);
  g.publishOutput(h, "outputValue", "held");
  const auto r = g.renderer();
  const auto held = [&](const Value& in, bool sampling, bool reset) {
    r->setValueForInputKey(in, "inputSampleValue");
    r->setValueForInputKey(sampling, "inputSampling");
    r->setValueForInputKey(reset, "inputResetSignal");
    frame(r, 0);
    return r->valueForOutputKey("held");
  };
  EXPECT_TRUE(held(1.0, false, false).isEmpty());
  EXPECT_EQ(held(2.0, true, false), Value(2.0));
  EXPECT_EQ(held(3.0, false, false), Value(2.0));
  EXPECT_EQ(held(QStringLiteral("text"), false, true), Value(QStringLiteral("text")));
  EXPECT_EQ(held(5.0, false, true), Value(QStringLiteral("text")));
}

TEST(MemoryPatches, queueKeepsTheLastValues) {
  for (const bool continuous : {true, false}) {
    GraphBuilder g;
    const QString q = g.node("QCQueue", {{"continuous", continuous}}, {{"inputSize", 3}});
    g.publishInput(q, "inputValue", "in");
    g.publishInput(q, "inputResetSignal", "reset");
    g.publishOutput(q, "outputQueue", "queue");
    const auto r = g.renderer();
    const auto after = [&](double in) {
      r->setValueForInputKey(in, "in");
      frame(r, in);
      QStringList values;
      const runtime::Structure queue = r->valueForOutputKey("queue").toStructure();
      for (qsizetype i = 0; i < queue.size(); ++i) values += queue.at(i).toString();
      return values.join(QLatin1Char(' '));
    };
    EXPECT_EQ(after(1), "1");
    EXPECT_EQ(after(1), continuous ? "1 1" : "1");
    EXPECT_EQ(after(2), continuous ? "1 1 2" : "1 2");
    EXPECT_EQ(after(3), continuous ? "1 2 3" : "1 2 3");
    EXPECT_EQ(after(4), "2 3 4");
    r->setValueForInputKey(true, "reset");
    EXPECT_EQ(after(5), "5");
  }
}

/// Adds one to what was there in the frame before.
GraphBuilder accumulator() {
  GraphBuilder g;
  const QString feedback =
      g.node("QCRecursor",
             {{"savedPorts",
               foundation::PropertyArray{foundation::PropertyArray{u"QCNumberPort", u"Sum"}}}},
             {{"Initial_Sum", 10.0}});
  const QString add =
      g.node("QCMath", {{"numberOfOperations", 1}}, {{"operation_1", 0}, {"operand_1", 1.0}});
  g.connect(feedback, "Sum", add, "inputValue");
  g.publishInput(feedback, "inputInitialize", "initialize");
  g.publishOutput(add, "outputValue", "Sum");
  return g;
}

TEST(FeedbackPatch, givesTheValueOfTheFrameBefore) {
  GraphBuilder root;
  const QString macro = root.macro("QCPatch", accumulator());
  root.publishInput(macro, "initialize", "initialize");
  root.publishOutput(macro, "Sum", "sum");
  const auto r = root.renderer();
  const auto sumAt = [&](double time) {
    frame(r, time);
    return r->valueForOutputKey("sum").toNumber();
  };
  EXPECT_EQ(sumAt(0), 11) << "starts with the initial value";
  EXPECT_EQ(sumAt(1), 12);
  EXPECT_EQ(sumAt(2), 13);
  r->setValueForInputKey(true, "initialize");
  EXPECT_EQ(sumAt(3), 11);
  EXPECT_EQ(sumAt(4), 11);
  r->setValueForInputKey(false, "initialize");
  EXPECT_EQ(sumAt(5), 12);
  EXPECT_EQ(sumAt(1), 11) << "time ran backwards: anew";
}

std::vector<float> placesOf(const runtime::DrawList& list) {
  std::vector<float> places;
  for (const runtime::DrawItem& item : list.items)
    if (const auto* quad = std::get_if<runtime::QuadItem>(&item))
      places.push_back(quad->matrix.map(QVector3D()).x());
  return places;
}

TEST(FeedbackPatch, eachIterationHasItsOwnPast) {
  // Sum grows by the iteration's index plus one in every frame.
  GraphBuilder content;
  const QString index = content.node("QCIteratorVariables");
  const QString feedback = content.node(
      "QCRecursor", {{"savedPorts", foundation::PropertyArray{
                                        foundation::PropertyArray{u"QCNumberPort", u"Sum"}}}});
  const QString add = content.node("QCMath", {{"numberOfOperations", 2}}, {{"operand_2", 1.0}});
  const QString sprite = content.node("QCSprite");
  content.connect(feedback, "Sum", add, "inputValue");
  content.connect(index, "outputIndex", add, "operand_1");
  content.connect(add, "outputValue", sprite, "inputX");
  content.publishOutput(add, "outputValue", "Sum");
  GraphBuilder root;
  root.macro("QCIterator", content, {{"inputCount", 3}});
  const auto r = root.renderer();
  for (int i = 1; i <= 3; ++i) {
    const auto n = static_cast<float>(i);
    EXPECT_EQ(placesOf(r->renderAtTime(i, {16, 9})), (std::vector<float>{n, 2 * n, 3 * n}));
  }
}

TEST(FeedbackPatch, aDisabledMacroKeepsItsPast) {
  GraphBuilder content = accumulator();
  const QString sprite = content.node("QCSprite");
  content.connect("QCMath_2", "outputValue", sprite, "inputX");
  GraphBuilder root;
  const QString macro = root.macro("QCPatch", content);
  root.publishInput(macro, "_enable", "enable");
  const auto r = root.renderer();
  EXPECT_EQ(placesOf(r->renderAtTime(0, {16, 9})), std::vector<float>{11});
  r->setValueForInputKey(false, "enable");
  for (int i = 1; i < 5; ++i) EXPECT_TRUE(placesOf(r->renderAtTime(i, {16, 9})).empty());
  r->setValueForInputKey(true, "enable");
  EXPECT_EQ(placesOf(r->renderAtTime(5, {16, 9})), std::vector<float>{12});
}

TEST(Iteration, patchesOutsideAreNotRunAgainAfterAnIterator) {
  GraphBuilder root;
  const QString pulse = root.node("QCPulse", {}, {{"inputSignal", true}});
  const QString before = root.node("QCSprite");
  GraphBuilder content;
  const QString inner = content.node("QCSprite");
  content.publishInput(inner, "inputX", "x");
  const QString iterator = root.macro("QCIterator", content, {{"inputCount", 2}});
  const QString after = root.node("QCSprite");
  for (const QString& sprite : {before, after})
    root.connect(pulse, "outputSignal", sprite, "inputX");
  root.connect(pulse, "outputSignal", iterator, "x");
  const auto r = root.renderer();
  EXPECT_EQ(placesOf(r->renderAtTime(0, {16, 9})), (std::vector<float>{1, 1, 1, 1}))
      << "one frame has one truth";
  EXPECT_EQ(placesOf(r->renderAtTime(1, {16, 9})), (std::vector<float>{0, 0, 0, 0}));
}

TEST(Iteration, memoriesAreKeptPerPass) {
  GraphBuilder content;
  const QString index = content.node("QCIteratorVariables");
  const QString smooth = content.node("QCSmooth", {}, {{"inputIncreasingDuration", 4.0}});
  const QString scale = content.node("QCMath", {{"numberOfOperations", 1}}, {{"operation_1", 2}});
  const QString sprite = content.node("QCSprite");
  content.connect(index, "outputIndex", scale, "operand_1");
  content.connect(scale, "outputValue", smooth, "inputValue");
  content.connect(smooth, "outputValue", sprite, "inputX");
  content.publishInput(scale, "inputValue", "target");
  GraphBuilder root;
  const QString iterator = root.macro("QCIterator", content, {{"inputCount", 3}});
  root.publishInput(iterator, "target", "target");
  const auto r = root.renderer();
  EXPECT_EQ(placesOf(r->renderAtTime(0, {16, 9})), (std::vector<float>{0, 0, 0}));
  r->setValueForInputKey(4.0, "target");
  EXPECT_EQ(placesOf(r->renderAtTime(1, {16, 9})), (std::vector<float>{0, 0, 0}));
  EXPECT_EQ(placesOf(r->renderAtTime(2, {16, 9})), (std::vector<float>{0, 1, 2}));
}

TEST(PhysicsPatches, coastsOnAndSprings) {
  GraphBuilder g;
  const QString momentum = g.node("QCPhysics", {{"numberOfInputs", 1}}, {{"inputFriction", 1.0}});
  const QString spring = g.node("QCPhysicsEffect:force", {}, {{"input_0", 1e9}});
  for (const char* key : {"inputSampling", "input_1"}) g.publishInput(momentum, key, key);
  g.publishInput(spring, "effect_1", "target");
  g.publishOutput(momentum, "output_1", "momentum");
  g.publishOutput(spring, "output_1", "spring");
  const auto r = g.renderer();
  r->setValueForInputKey(true, "inputSampling");
  frame(r, 0);
  r->setValueForInputKey(2.0, "input_1");
  r->setValueForInputKey(5.0, "target");
  frame(r, 1);
  EXPECT_EQ(r->valueForOutputKey("momentum").toNumber(), 2);
  r->setValueForInputKey(false, "inputSampling");
  r->setValueForInputKey(0.0, "input_1");
  frame(r, 2);
  EXPECT_NEAR(r->valueForOutputKey("momentum").toNumber(), 2 + 2 * (1 - std::exp(-1)), 1e-9);
  frame(r, 1e6);
  EXPECT_NEAR(r->valueForOutputKey("momentum").toNumber(), 4, 1e-9) << "rests at last";
  EXPECT_NEAR(r->valueForOutputKey("spring").toNumber(), 5, 1e-6) << "stable with any force";
}

}  // namespace
