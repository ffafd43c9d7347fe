#include "support/SinglePatch.h"

using foundation::Color;
using support::GraphBuilder;
using support::outputOf;
using Dictionary = GraphBuilder::Dictionary;

namespace {

Dictionary components(double a, double b, double c, double alpha) {
  return {{QStringLiteral("input1"), a},
          {QStringLiteral("input2"), b},
          {QStringLiteral("input3"), c},
          {QStringLiteral("inputAlpha"), alpha}};
}

Dictionary stored(const Color& color) {
  return {{QStringLiteral("red"), color.red},
          {QStringLiteral("green"), color.green},
          {QStringLiteral("blue"), color.blue},
          {QStringLiteral("alpha"), color.alpha}};
}

void expectColor(const runtime::Value& value, const Color& expected) {
  const Color color = value.toColor();
  EXPECT_NEAR(color.red, expected.red, 1e-9);
  EXPECT_NEAR(color.green, expected.green, 1e-9);
  EXPECT_NEAR(color.blue, expected.blue, 1e-9);
  EXPECT_NEAR(color.alpha, expected.alpha, 1e-9);
}

}  // namespace

TEST(ColorPatches, FromComponentsAndBack) {
  struct Case {
    const char* identifier;
    double in[4];
    Color expected;
  };
  const Case cases[] = {
      {":rgb", {0.25, 0.5, 1, 0.5}, {0.25, 0.5, 1, 0.5}},
      {"", {2, -1, 0.5, 9}, {1, 0, 0.5, 1}},
      {":hsl", {0, 1, 0.5, 1}, {1, 0, 0, 1}},
      {":hsl", {1.0 / 3, 1, 0.25, 1}, {0, 0.5, 0, 1}},
      {":hsl", {0.7, 1, 1, 1}, {1, 1, 1, 1}},
      {":hsl", {0.7, 0, 0.4, 1}, {0.4, 0.4, 0.4, 1}},
      {":hsl", {0.75, 0.5, 0.5, 1}, {0.5, 0.25, 0.75, 1}},
  };
  for (const Case& c : cases)
    expectColor(
        outputOf(QStringLiteral("QCColorFromComponents") + QString::fromLatin1(c.identifier),
                 QStringLiteral("outputColor"), components(c.in[0], c.in[1], c.in[2], c.in[3])),
        c.expected);
  for (const Color& color :
       {Color{0.2, 0.4, 0.6, 0.5}, Color{0.9, 0.1, 0.3, 1}, Color{0, 0, 0, 1}}) {
    double part[3];
    for (int i = 0; i < 3; ++i)
      part[i] =
          outputOf(QStringLiteral("QCColorToComponents:hsl"), QStringLiteral("output%1").arg(i + 1),
                   {{QStringLiteral("inputColor"), stored(color)}})
              .toNumber();
    expectColor(outputOf(QStringLiteral("QCColorFromComponents:hsl"), QStringLiteral("outputColor"),
                         components(part[0], part[1], part[2], color.alpha)),
                color);
  }
}

TEST(ColorPatches, MixerFollowsTheCurve) {
  const auto mixed = [](double point, int curve) {
    return outputOf(QStringLiteral("QCColorMixer"), QStringLiteral("outputColor"),
                    {{QStringLiteral("inputColor1"), stored({1, 0, 0, 0})},
                     {QStringLiteral("inputColor2"), stored({0, 0, 1, 1})},
                     {QStringLiteral("inputMix"), point},
                     {QStringLiteral("inputInterpolation"), curve}});
  };
  expectColor(mixed(0.25, 0), {0.75, 0, 0.25, 0.25});
  expectColor(mixed(7, 0), {0, 0, 1, 1});
  EXPECT_LT(mixed(0.25, 1).toColor().blue, 0.2) << "an ease-in starts slowly";
}

TEST(ColorPatches, TransformTurnsTheHueAndScalesTheRest) {
  expectColor(outputOf(QStringLiteral("QCColorTransform"), QStringLiteral("outputColor"),
                       {{QStringLiteral("inputColor"), stored({1, 0, 0, 1})},
                        {QStringLiteral("inputHue"), -240.0},
                        {QStringLiteral("inputLuminosity"), 0.5},
                        {QStringLiteral("inputAlpha"), 0.25}}),
              {0, 0.5, 0, 0.25});
}
