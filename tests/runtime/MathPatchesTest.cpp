#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/GraphBuilder.h"

namespace {

using runtime::Value;
using support::GraphBuilder;
using Dictionary = GraphBuilder::Dictionary;

/// One node, one output, one frame.
double result(const QString& className, const QString& output, const Dictionary& inputs,
              const Dictionary& state = {}) {
  GraphBuilder g;
  g.publishOutput(g.node(className, state, inputs), output, "result");
  const auto r = g.renderer();
  (void)r->renderAtTime(0, {16, 9});
  return r->valueForOutputKey("result").toNumber();
}

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(MathPatches, mathAppliesEveryOperation) {
  struct Row {
    int operation;
    double operand, expected;
  };
  for (const Row& row : {Row{0, 2, 9}, Row{1, 2, 5}, Row{2, 2, 14}, Row{3, 2, 3.5}, Row{4, 4, 3},
                         Row{5, 2, 49}, Row{6, 2, 2}, Row{7, 9, 9}, Row{3, 0, infinity}})
    EXPECT_EQ(
        result("QCMath", "outputValue",
               {{"inputValue", 7.0}, {"operation_1", row.operation}, {"operand_1", row.operand}},
               {{"numberOfOperations", 1}}),
        row.expected)
        << "operation " << row.operation;
  EXPECT_TRUE(std::isnan(result("QCMath", "outputValue",
                                {{"inputValue", 7.0}, {"operation_1", 4}, {"operand_1", 0.0}},
                                {{"operationCount", 1}})));
  EXPECT_EQ(result("QCMath", "outputValue",
                   {{"inputValue", -7.0}, {"operation_1", 4}, {"operand_1", 4.0}},
                   {{"numberOfOperations", 1}}),
            -3)
      << "modulo keeps the dividend's sign";
}

TEST(MathPatches, mathAppliesOperationsInSequence) {
  EXPECT_EQ(result("QCMath", "outputValue",
                   {{"inputValue", 1.0},
                    {"operation_1", 0},
                    {"operand_1", 2.0},
                    {"operation_2", 2},
                    {"operand_2", 5.0},
                    {"operation_3", 1},
                    {"operand_3", 1.0}},
                   {{"numberOfOperations", 3}}),
            14);
}

TEST(MathPatches, roundGivesAllThree) {
  EXPECT_EQ(result("QCRoundValue", "outputRound", {{"inputValue", -2.5}}), -3);
  EXPECT_EQ(result("QCRoundValue", "outputFloor", {{"inputValue", -2.5}}), -3);
  EXPECT_EQ(result("QCRoundValue", "outputCeil", {{"inputValue", -2.5}}), -2);
}

TEST(MathPatches, rangeClipsAndRolls) {
  struct Row {
    double value, low, high, clip, roll;
  };
  for (const Row& row :
       {Row{5, 0, 2, 2, 1}, Row{-1, 0, 4, 0, 3}, Row{1, 0, 4, 1, 1}, Row{4, 0, 4, 4, 0},
        Row{3, 2, 2, 2, 2}, Row{-1e-17, 0, 4, 0, 0}, Row{3, 0, infinity, 3, 3}}) {
    const Dictionary inputs{
        {"inputValue", row.value}, {"inputMin", row.low}, {"inputMax", row.high}};
    EXPECT_EQ(result("QCRangeValue", "outputClip", inputs), row.clip) << row.value;
    EXPECT_EQ(result("QCRangeValue", "outputRoll", inputs), row.roll) << row.value;
  }
  // Files hold NaN as a limit.
  EXPECT_EQ(result("QCRangeValue", "outputClip",
                   {{"inputValue", 5.0}, {"inputMin", 0.0}, {"inputMax", nan}}),
            5);
}

TEST(MathPatches, conditionalUsesItsTolerance) {
  struct Row {
    double a, b, tolerance;
    std::array<bool, 6> expected;  // = ≠ > < ≥ ≤
  };
  const Row rows[] = {{1, 1, 0, {true, false, false, false, true, true}},
                      {2, 1, 0, {false, true, true, false, true, false}},
                      {1, 2, 0, {false, true, false, true, false, true}},
                      {1.5, 1, 1, {true, false, false, false, true, true}},
                      {infinity, infinity, 0, {true, false, false, false, true, true}},
                      {nan, 1, 0, {false, true, false, false, false, false}}};
  for (const Row& row : rows)
    for (int test = 0; test < 6; ++test)
      EXPECT_EQ(result("QCConditional", "outputResult",
                       {{"inputValue1", row.a},
                        {"inputValue2", row.b},
                        {"inputTest", test},
                        {"inputTolerance", row.tolerance}}) != 0,
                row.expected[static_cast<size_t>(test)])
          << row.a << " test " << test << " " << row.b;
}

TEST(MathPatches, logicFollowsItsTruthTables) {
  // Bit a + 2 b of each operation's result.
  const int tables[] = {0b1000, 0b1110, 0b0110, 0b0101, 0b0111, 0b0001, 0b1001};
  for (int operation = 0; operation < 7; ++operation)
    for (int bits = 0; bits < 4; ++bits)
      EXPECT_EQ(result("QCLogic", "outputResult",
                       {{"inputValue1", (bits & 1) != 0},
                        {"inputValue2", (bits & 2) != 0},
                        {"inputOperation", operation}}),
                (tables[operation] >> bits) & 1)
          << operation << " " << bits;
}

TEST(SwitchPatches, multiplexerPullsOnlyTheChosenSource) {
  GraphBuilder g;
  // Counters of frames in which they are asked.
  const auto ticking = [&g] { return g.node("QCQueue", {}, {{"inputSize", 100}}); };
  const QString a = ticking();
  const QString b = ticking();
  const QString mux = g.node("QCMultiplexer", {{"inputCount", 2}, {"portClass", u"QCVirtualPort"}});
  g.connect(a, "outputQueue", mux, "source_0");
  g.connect(b, "outputQueue", mux, "source_1");
  g.publishInput(mux, "inputIndex", "index");
  g.publishOutput(mux, "output", "result");
  const auto r = g.renderer();
  const auto sizeAt = [&](double time) {
    (void)r->renderAtTime(time, {16, 9});
    return r->valueForOutputKey("result").toStructure().size();
  };
  EXPECT_EQ(sizeAt(0), 1);
  EXPECT_EQ(sizeAt(1), 2);
  r->setValueForInputKey(Value::index(7), "index");  // clamped to the last source
  EXPECT_EQ(sizeAt(2), 1) << "the other source has not run before";
  r->setValueForInputKey(Value::index(0), "index");
  EXPECT_EQ(sizeAt(3), 3) << "nor has the first one in between";
}

TEST(SwitchPatches, demultiplexerResetsOrKeeps) {
  for (const bool resets : {true, false}) {
    GraphBuilder g;
    const QString d =
        g.node("QCDemultiplexer",
               {{"outputCount", 2}, {"portClass", u"QCNumberPort"}, {"resetOutputs", resets}},
               {{"input", 5.0}, {"inputReset", -1.0}});
    g.publishInput(d, "inputIndex", "index");
    g.publishOutput(d, "destination_0", "zero");
    g.publishOutput(d, "destination_1", "one");
    const auto r = g.renderer();
    (void)r->renderAtTime(0, {16, 9});
    EXPECT_EQ(r->valueForOutputKey("zero").toNumber(), 5);
    EXPECT_EQ(r->valueForOutputKey("one").toNumber(), resets ? -1 : 0);
    r->setValueForInputKey(Value::index(1), "index");
    (void)r->renderAtTime(1, {16, 9});
    EXPECT_EQ(r->valueForOutputKey("zero").toNumber(), resets ? -1 : 5);
    EXPECT_EQ(r->valueForOutputKey("one").toNumber(), 5);
  }
}

TEST(NoisePatches, randomDependsOnSeedAndTimeOnly) {
  const auto values = [](int seed, bool smooth, std::vector<double> times) {
    GraphBuilder g;
    g.publishOutput(g.node("QCRandom", {{"randomSeed", seed}, {"usePerlinNoise", smooth}},
                           {{"inputMin", 2.0}, {"inputMax", 3.0}}),
                    "outputValue", "v");
    const auto r = g.renderer();
    std::vector<double> out;
    for (const double t : times) {
      (void)r->renderAtTime(t, {16, 9});
      out.push_back(r->valueForOutputKey("v").toNumber());
      EXPECT_GE(out.back(), 2);
      EXPECT_LE(out.back(), 3);
    }
    return out;
  };
  for (const bool smooth : {false, true}) {
    const auto forwards = values(7, smooth, {0.3, 0.34, 0.38});
    const auto backwards = values(7, smooth, {0.38, 0.34, 0.3});
    EXPECT_EQ(forwards[0], backwards[2]);
    EXPECT_EQ(forwards[2], backwards[0]);
    EXPECT_NE(forwards[0], forwards[1]);
    EXPECT_NE(forwards[0], values(8, smooth, {0.3})[0]);
  }
  const auto smooth = values(7, true, {1, 1.001, 1.002});
  EXPECT_LT(std::abs(smooth[1] - smooth[0]), 0.02);
}

}  // namespace
