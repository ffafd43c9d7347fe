#include <gtest/gtest.h>

#include "support/ImageGraph.h"

/// Whole families of image filters against values that follow from what they are: formulas worked
/// out on paper, and the settings at which a filter must change nothing.
namespace {

using foundation::PropertyDictionary;
using runtime::Image;
using support::at;
using support::colorValue;
using support::ImageGraph;
using support::Rgba;
using support::text;

void expectNear(const Rgba& got, const Rgba& expected, int tolerance, const char* name) {
  for (size_t i = 0; i < 4; ++i)
    EXPECT_NEAR(got[i], expected[i], tolerance) << name << " component " << i;
}

TEST(ImageFilterFamilies, BlendModesOfOpaqueColours) {
  struct Case {
    const char* name;
    Rgba expected;
  };
  // Source (.8, .4, .2), luminance .498, saturation .6; below it (.2, .6, .4), .458 and .4.
  const Case cases[] = {
      {"CIDarkenBlendMode", {51, 102, 51, 255}},       {"CILightenBlendMode", {204, 153, 102, 255}},
      {"CIOverlayBlendMode", {82, 133, 41, 255}},       // .32, .52, .16
      {"CIHardLightBlendMode", {173, 122, 41, 255}},    // .68, .48, .16
      {"CISoftLightBlendMode", {89, 141, 65, 255}},     // .3488, .552, .256
      {"CIColorDodgeBlendMode", {255, 255, 128, 255}},  // 1, 1, .5
      {"CIExclusionBlendMode", {173, 133, 112, 255}},   // .68, .52, .44
      {"CIColorBlendMode", {194, 92, 41, 255}},         // the source less .04
      {"CILuminosityBlendMode", {61, 163, 112, 255}},   // what is below plus .04
      {"CIHueBlendMode", {168, 100, 66, 255}},          // (.4, .1333, 0) plus .2593
      {"CISaturationBlendMode", {18, 171, 95, 255}},    // (0, .6, .3) plus .071
  };
  for (const Case& c : cases) {
    ImageGraph g;
    const QString node = g.filter(c.name);
    g.into(g.rectangle(colorValue(0.8, 0.4, 0.2), 0, 0, 4, 4), node);
    g.into(g.rectangle(colorValue(0.2, 0.6, 0.4), 0, 0, 4, 4), node, "inputBackgroundImage");
    expectNear(at(g.result(node), 1, 1), c.expected, 1, c.name);
  }
  ImageGraph g;  // 1 − (1 − b) / s: 1 − .4/.8, 1 − .2/.4, and below 0
  const QString burn = g.filter("CIColorBurnBlendMode");
  g.into(g.rectangle(colorValue(0.8, 0.4, 0.2), 0, 0, 4, 4), burn);
  g.into(g.rectangle(colorValue(0.6, 0.8, 0.4), 0, 0, 4, 4), burn, "inputBackgroundImage");
  expectNear(at(g.result(burn), 1, 1), {128, 128, 0, 255}, 1, "CIColorBurnBlendMode");
}

TEST(ImageFilterFamilies, ColourFilters) {
  struct Case {
    const char* name;
    PropertyDictionary inputs;
    foundation::PropertyValue color;
    Rgba expected;
  };
  const auto red = colorValue(1, 0, 0);
  const auto blue = colorValue(0, 0, 1);
  const auto white = colorValue(1, 1, 1);
  const auto black = colorValue(0, 0, 0);
  const auto some = colorValue(0.8, 0.4, 0.2, 0.5);
  const PropertyDictionary two{{text("inputColor0"), red}, {text("inputColor1"), blue}};
  const Case cases[] = {
      {"CIMinimumComponent", {}, some, {26, 26, 26, 128}},
      {"CIFalseColor", two, black, {255, 0, 0, 255}},
      {"CIFalseColor", two, white, {0, 0, 255, 255}},
      {"CIMaskToAlpha", {}, white, {255, 255, 255, 255}},
      {"CIMaskToAlpha", {}, black, {0, 0, 0, 0}},
      {"CIWhitePointAdjust",
       {{text("inputColor"), colorValue(0.5, 1, 1)}},
       some,
       {51, 51, 26, 128}},
      {"CISepiaTone", {{text("inputIntensity"), 0.0}}, some, {102, 51, 26, 128}},
      {"CIVignette", {{text("inputIntensity"), 0.0}}, some, {102, 51, 26, 128}},
  };
  for (const Case& c : cases) {
    ImageGraph g;
    const QString node = g.filter(c.name, c.inputs);
    g.into(g.rectangle(c.color, 0, 0, 8, 8), node);
    expectNear(at(g.result(node), 4, 4), c.expected, 1, c.name);
  }
}

TEST(ImageFilterFamilies, ColourMapLooksTheLuminanceUp) {
  for (const bool isWhite : {false, true}) {
    ImageGraph g;
    const QString ramp = g.filter("CIAdditionCompositing");
    g.into(g.rectangle(colorValue(1, 0, 0), 0, 0, 8, 1), ramp);
    g.into(g.rectangle(colorValue(0, 1, 0), 8, 0, 8, 1), ramp, "inputBackgroundImage");
    const double v = isWhite ? 1 : 0;
    const QString map = g.filter("CIColorMap");
    g.into(g.rectangle(colorValue(v, v, v), 0, 0, 4, 4), map);
    g.into(ramp, map, "inputGradientImage");
    expectNear(at(g.result(map), 1, 1), isWhite ? Rgba{0, 255, 0, 255} : Rgba{255, 0, 0, 255}, 1,
               "CIColorMap");
  }
}

/// A picture with a corner of another colour, so that turning and shifting show.
QString picture(ImageGraph& g) {
  const QString node = g.filter("CISourceOverCompositing");
  g.into(g.rectangle(colorValue(1, 0, 0), 4, 6, 10, 8), node);
  g.into(g.rectangle(colorValue(0, 0, 1), 0, 0, 40, 30), node, "inputBackgroundImage");
  return node;
}

TEST(ImageFilterFamilies, NeutralSettingsChangeNothing) {
  const auto at0 = [](const char* key) { return PropertyDictionary{{text(key), 0.0}}; };
  const PropertyDictionary onePixel{{text("inputScale"), 1.0}};
  const std::pair<const char*, PropertyDictionary> cases[] = {
      {"CIBloom", at0("inputIntensity")},        {"CIGloom", at0("inputIntensity")},
      {"CIUnsharpMask", at0("inputIntensity")},  {"CISharpenLuminance", at0("inputSharpness")},
      {"CIBumpDistortion", at0("inputScale")},   {"CIPinchDistortion", at0("inputScale")},
      {"CITwirlDistortion", at0("inputAngle")},  {"CIVortexDistortion", at0("inputAngle")},
      {"CIStraightenFilter", at0("inputAngle")}, {"CILanczosScaleTransform", onePixel},
      {"CIMotionBlur", at0("inputRadius")},      {"CIZoomBlur", at0("inputAmount")},
      {"CIDiscBlur", at0("inputRadius")},        {"CIDisplacementDistortion", at0("inputScale")},
  };
  for (const auto& [name, inputs] : cases) {
    ImageGraph g;
    const QString node = g.filter(name, inputs);
    g.into(picture(g), node);
    const Image image = g.result(node);
    ASSERT_FALSE(image.isNull()) << name;
    for (const QPoint p : {QPoint(5, 7), QPoint(12, 12), QPoint(3, 7), QPoint(20, 20)}) {
      const bool inside = QRect(4, 6, 10, 8).contains(p);
      expectNear(at(image, p.x(), p.y()), inside ? Rgba{255, 0, 0, 255} : Rgba{0, 0, 255, 255}, 1,
                 name);
    }
  }
}

TEST(ImageFilterFamilies, OneColourStaysOneColourAwayFromTheEdge) {
  for (const char* name : {"CIBoxBlur",
                           "CIDiscBlur",
                           "CIMotionBlur",
                           "CIZoomBlur",
                           "CICheapBlur",
                           "CIMedianFilter",
                           "CINoiseReduction",
                           "CISharpenLuminance",
                           "CIUnsharpMask",
                           "CIPixellate",
                           "CIHexagonalPixellate",
                           "CICrystallize",
                           "CIOpTile",
                           "CIKaleidoscope",
                           "CIGlassDistortion",
                           "CIBumpDistortion",
                           "CIPinchDistortion",
                           "CITwirlDistortion",
                           "CIVortexDistortion",
                           "CICircleSplashDistortion",
                           "CITorusLensDistortion",
                           "CIStraightenFilter"}) {
    ImageGraph g;
    const QString node = g.filter(name);
    g.into(g.rectangle(colorValue(0.2, 0.6, 0.4), 0, 0, 300, 300), node);
    if (QLatin1String(name) == QLatin1String("CIGlassDistortion"))
      g.into(g.rectangle(colorValue(0.5, 0.5, 0.5), 0, 0, 300, 300), node, "inputTexture");
    expectNear(at(g.result(node), 140, 160), {51, 153, 102, 255}, 2, name);
  }
}

TEST(ImageFilterFamilies, EdgesAreWhereColoursMeetAndNowhereElse) {
  ImageGraph g;
  const QString edges = g.filter("CIEdges", {{text("inputIntensity"), 1.0}});
  g.into(picture(g), edges);
  const Image image = g.result(edges);
  const Rgba flat = at(image, 25, 22);
  EXPECT_LE(flat[0] + flat[1] + flat[2], 3);
  // √2 · 2 times the step from blue to red is more than white.
  expectNear(at(image, 3, 10), {255, 0, 255, 255}, 1, "CIEdges");
}

TEST(ImageFilterFamilies, ScreensLeaveBlackAndWhite) {
  for (const char* name : {"CIDotScreen", "CILineScreen", "CIHatchedScreen", "CICircularScreen"})
    for (const int v : {0, 1}) {
      ImageGraph g;
      const QString node = g.filter(name, {{text("inputSharpness"), 1.0}});
      g.into(g.rectangle(colorValue(v, v, v), 0, 0, 60, 60), node);
      const Image image = g.result(node);
      for (const QPoint p : {QPoint(11, 17), QPoint(30, 30), QPoint(44, 9)})
        expectNear(at(image, p.x(), p.y()), {255 * v, 255 * v, 255 * v, 255}, 1, name);
    }
}

TEST(ImageFilterFamilies, TransitionsBeginAndEndWithTheirImages) {
  const auto during = [](const char* name, double time) {
    ImageGraph g;
    const QString node = g.filter(name, {{text("inputTime"), time},
                                         {text("inputExtent_X"), 0.0},
                                         {text("inputExtent_Y"), 0.0},
                                         {text("inputExtent_Z"), 60.0},
                                         {text("inputExtent_W"), 60.0},
                                         {text("inputCenter_X"), 30.0},
                                         {text("inputCenter_Y"), 30.0}});
    g.into(g.rectangle(colorValue(1, 0, 0), 0, 0, 60, 60), node);
    g.into(g.rectangle(colorValue(0, 0, 1), 0, 0, 60, 60), node, "inputTargetImage");
    g.into(g.rectangle(colorValue(0.5, 0.5, 0.5), 0, 0, 60, 60), node, "inputMaskImage");
    return g.result(node);
  };
  for (const char* name :
       {"CIDissolveTransition", "CISwipeTransition", "CIBarsSwipeTransition", "CIModTransition",
        "CIFlashTransition", "CICopyMachineTransition", "CIDisintegrateWithMaskTransition"})
    for (const QPoint p : {QPoint(8, 9), QPoint(31, 29), QPoint(52, 50)}) {
      expectNear(at(during(name, 0), p.x(), p.y()), {255, 0, 0, 255}, 2, name);
      expectNear(at(during(name, 1), p.x(), p.y()), {0, 0, 255, 255}, 2, name);
    }
  expectNear(at(during("CIDissolveTransition", 0.25), 8, 9), {191, 0, 64, 255}, 1, "a quarter");
}

TEST(ImageFilterFamilies, Generators) {
  ImageGraph stripes;
  const Image lines = stripes.result(
      stripes.filter("CIStripesGenerator", {{text("inputCenter_X"), 0.0},
                                            {text("inputWidth"), 4.0},
                                            {text("inputColor0"), colorValue(1, 0, 0)},
                                            {text("inputColor1"), colorValue(0, 0, 1)}}));
  EXPECT_EQ(at(lines, 1, 50), (Rgba{255, 0, 0, 255}));
  EXPECT_EQ(at(lines, 5, -50), (Rgba{0, 0, 255, 255}));
  EXPECT_EQ(at(lines, 9, 0), at(lines, 1, 0));

  ImageGraph bell;
  const Image spot =
      bell.result(bell.filter("CIGaussianGradient", {{text("inputCenter_X"), 50.0},
                                                     {text("inputCenter_Y"), 50.0},
                                                     {text("inputRadius"), 40.0},
                                                     {text("inputColor0"), colorValue(1, 0, 0)},
                                                     {text("inputColor1"), colorValue(0, 0, 1)}}));
  expectNear(at(spot, 50, 50), {255, 0, 0, 255}, 2, "the centre");
  expectNear(at(spot, 95, 50), {0, 0, 255, 255}, 2, "beyond the radius");
  EXPECT_EQ(at(spot, 30, 49), at(spot, 69, 50)) << "as far to the left as to the right";

  ImageGraph one;
  ImageGraph two;
  const Image first = one.result(one.filter("CIRandomGenerator"));
  const Image again = two.result(two.filter("CIRandomGenerator"));
  std::set<Rgba> colors;
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(at(first, i, 3), at(again, i, 3));
    colors.insert(at(first, i, 3));
  }
  EXPECT_GT(colors.size(), 90u);
}

TEST(ImageFilterFamilies, LightsShineFromTheirCentre) {
  for (const char* name : {"CIStarShineGenerator", "CISunbeamsGenerator"}) {
    ImageGraph g;
    const Image image =
        g.result(g.filter(name, {{text("inputCenter_X"), 50.0}, {text("inputCenter_Y"), 50.0}}));
    const auto light = [&image](int x, int y) {
      const Rgba c = at(image, x, y);
      return c[0] + c[1] + c[2];
    };
    EXPECT_GT(light(50, 50), 200) << name;
    EXPECT_LT(light(2000, 1700), light(50, 50) / 4) << name;
  }
}

TEST(ImageFilterFamilies, PerspectiveMapsTheCornersToTheirPlaces) {
  ImageGraph g;
  const QString node = g.filter("CIPerspectiveTransform", {{text("inputTopLeft_X"), 10.0},
                                                           {text("inputTopLeft_Y"), 50.0},
                                                           {text("inputTopRight_X"), 50.0},
                                                           {text("inputTopRight_Y"), 50.0},
                                                           {text("inputBottomRight_X"), 60.0},
                                                           {text("inputBottomRight_Y"), 10.0},
                                                           {text("inputBottomLeft_X"), 0.0},
                                                           {text("inputBottomLeft_Y"), 10.0}});
  g.into(g.rectangle(colorValue(1, 1, 1), 0, 0, 30, 20), node);
  const Image image = g.result(node);
  EXPECT_EQ(at(image, 12, 47)[3], 255);
  EXPECT_EQ(at(image, 3, 11)[3], 255);
  EXPECT_EQ(at(image, 3, 47)[3], 0);  // beside the shorter upper side
  EXPECT_EQ(at(image, 30, 53)[3], 0);
}

TEST(ImageFilterFamilies, MasksRiseTowardsTheirMiddle) {
  ImageGraph g;
  const QString node = g.filter("CIHeightFieldFromMask", {{text("inputRadius"), 6.0}});
  g.into(g.rectangle(colorValue(1, 1, 1), 0, 0, 40, 40), node);
  const Image image = g.result(node);
  EXPECT_GT(at(image, 20, 20)[0], at(image, 1, 20)[0]);
  EXPECT_GE(at(image, 20, 20)[0], 230);
}

}  // namespace
