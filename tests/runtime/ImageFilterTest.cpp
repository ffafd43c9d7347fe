#include <gtest/gtest.h>

#include "support/ImageGraph.h"

using foundation::PropertyDictionary;
using foundation::PropertyValue;
using runtime::Image;
using support::GraphBuilder;

using support::at;
using support::colorValue;
using support::ImageGraph;
using support::Rgba;
using support::text;

TEST(ImageFilter, RadialGradientDrawsAnAntiAliasedDisc) {
  ImageGraph g;
  const QString disc =
      g.filter("CIRadialGradient", {{text("inputCenter_X"), 10.0},
                                    {text("inputCenter_Y"), 10.0},
                                    {text("inputRadius0"), 7.5},
                                    {text("inputRadius1"), 8.5},
                                    {text("inputColor0"), colorValue(1, 0, 0)},
                                    {text("inputColor1"), colorValue(0, 0, 0, 0)}});
  const Image image = g.result(g.crop(disc, 0, 0, 20, 20));
  EXPECT_EQ(image.extent(), QRect(0, 0, 20, 20));
  EXPECT_EQ(at(image, 10, 10), (Rgba{255, 0, 0, 255}));
  // Centres at +0.5: (17.5, 10.5) is 7.5166 from (10, 10), just beyond the inner radius.
  EXPECT_EQ(at(image, 17, 10), (Rgba{251, 0, 0, 251}));
  EXPECT_EQ(at(image, 18, 10), (Rgba{0, 0, 0, 0}));
  EXPECT_EQ(at(image, 2, 9), at(image, 17, 10));  // symmetric on both axes
  EXPECT_EQ(at(image, 10, 2), at(image, 10, 17));
}

TEST(ImageFilter, LinearGradientRunsFromPointToPoint) {
  ImageGraph g;
  const QString ramp = g.filter(
      "CILinearGradient",
      {{text("inputPoint0_X"), 0.0}, {text("inputPoint1_X"), 0.0}, {text("inputPoint1_Y"), 10.0}});
  const Image image = g.result(ramp);
  EXPECT_TRUE(image.isInfinite());
  EXPECT_TRUE(image.bitmap().isNull());
  EXPECT_EQ(at(image, 500, 0)[0], 242);  // 1 − 0.05
  EXPECT_EQ(at(image, -500, 9)[0], 13);  // 1 − 0.95
  EXPECT_EQ(at(image, 3, -50)[0], 255);  // clamped before the first point
  EXPECT_EQ(at(image, 3, 50), (Rgba{0, 0, 0, 255}));
}

TEST(ImageFilter, CheckerboardStartsAtItsCentreWithTheFirstColour) {
  ImageGraph g;
  const Image image =
      g.result(g.filter("CICheckerboardGenerator", {{text("inputCenter_X"), 4.0},
                                                    {text("inputCenter_Y"), 4.0},
                                                    {text("inputWidth"), 4.0},
                                                    {text("inputColor0"), colorValue(0, 1, 0)},
                                                    {text("inputColor1"), colorValue(0, 0, 1)}}));
  const Rgba even{0, 255, 0, 255};
  const Rgba odd{0, 0, 255, 255};
  EXPECT_EQ(at(image, 4, 4), even);
  EXPECT_EQ(at(image, 7, 7), even);
  EXPECT_EQ(at(image, 8, 4), odd);
  EXPECT_EQ(at(image, 3, 4), odd);
  EXPECT_EQ(at(image, 3, 3), even);
  EXPECT_EQ(at(image, -1, 4), even);
}

TEST(ImageFilter, CropKeepsThePlaceAndCountsRowsUpwards) {
  ImageGraph g;
  const QString lower = g.rectangle(colorValue(1, 0, 0), 5, 3, 10, 2);
  const QString upper = g.rectangle(colorValue(0, 0, 1), 5, 5, 10, 2);
  const QString both = g.filter("CISourceOverCompositing");
  g.into(lower, both);
  g.into(upper, both, "inputBackgroundImage");
  const Image image = g.result(g.crop(both, 8, 4, 100, 2));
  EXPECT_EQ(image.extent(), QRect(8, 4, 7, 2));
  EXPECT_EQ(at(image, 8, 4), (Rgba{255, 0, 0, 255}));
  EXPECT_EQ(at(image, 8, 5), (Rgba{0, 0, 255, 255}));
  EXPECT_EQ(at(image, 7, 4), (Rgba{0, 0, 0, 0}));
  // In the bitmap the first row is the upper one.
  EXPECT_EQ(image.bitmap().pixelColor(0, 0), QColor(Qt::blue));
}

struct Composite {
  const char* name;
  Rgba expected;
};

TEST(ImageFilter, CompositingFormulas) {
  // Premultiplied: S = (.4, 0, 0, .4) and B = (0, .6, .3, .6), in 255ths 102 and 153/77.
  const Composite cases[] = {
      {"CISourceOverCompositing", {102, 92, 46, 194}},  // B · 0.6
      {"CISourceInCompositing", {61, 0, 0, 61}},
      {"CISourceOutCompositing", {41, 0, 0, 41}},
      {"CISourceAtopCompositing", {61, 92, 46, 153}},
      {"CIAdditionCompositing", {102, 153, 77, 255}},
      {"CIMultiplyCompositing", {0, 0, 0, 61}},
      {"CIMaximumCompositing", {102, 153, 77, 153}},
      {"CIMinimumCompositing", {0, 0, 0, 102}},
      {"CIMultiplyBlendMode", {41, 92, 46, 194}},
      {"CIScreenBlendMode", {102, 153, 77, 194}},
      {"CIDifferenceBlendMode", {102, 153, 77, 194}},
      {"CISubtractBlendMode", {41, 153, 77, 194}},
  };
  for (const Composite& c : cases) {
    ImageGraph g;
    const QString s = g.rectangle(colorValue(1, 0, 0, 0.4), 0, 0, 4, 4);
    const QString b = g.rectangle(colorValue(0, 1, 0.5, 0.6), 0, 0, 4, 4);
    const QString node = g.filter(c.name);
    g.into(s, node);
    g.into(b, node, "inputBackgroundImage");
    const Rgba got = at(g.result(node), 1, 1);
    for (size_t i = 0; i < 4; ++i)
      EXPECT_NEAR(got[i], c.expected[i], 1) << c.name << " component " << i;
  }
}

TEST(ImageFilter, BlendsWithTheLuminanceOfAMask) {
  ImageGraph g;
  const QString node = g.filter("CIBlendWithMask");
  g.into(g.rectangle(colorValue(1, 0, 0), 0, 0, 4, 4), node);
  g.into(g.rectangle(colorValue(0, 0, 1), 0, 0, 4, 4), node, "inputBackgroundImage");
  g.into(g.rectangle(colorValue(0.2, 0.2, 0.2), 0, 0, 2, 4), node, "inputMaskImage");
  const Image image = g.result(node);
  EXPECT_EQ(at(image, 0, 0), (Rgba{51, 0, 204, 255}));
  EXPECT_EQ(at(image, 3, 0), (Rgba{0, 0, 255, 255}));  // no mask: the background
}

class BlurOfRadius : public testing::TestWithParam<double> {};

TEST_P(BlurOfRadius, KeepsTheSumOfAlphaAndTheMiddle) {
  ImageGraph g;
  const QString blur = g.filter("CIGaussianBlur", {{text("inputRadius"), GetParam()}});
  g.into(g.rectangle(colorValue(1, 1, 1), 10, 20, 30, 40), blur);
  const Image image = g.result(blur);
  const int margin = qCeil(3 * GetParam());
  EXPECT_EQ(image.extent(), QRect(10, 20, 30, 40).adjusted(-margin, -margin, margin, margin));
  double sum = 0;
  double x = 0;
  double y = 0;
  const QImage bitmap = image.bitmap();
  for (int row = 0; row < bitmap.height(); ++row)
    for (int column = 0; column < bitmap.width(); ++column) {
      const int alpha = qAlpha(bitmap.pixel(column, row));
      sum += alpha;
      x += alpha * (column + 0.5);
      y += alpha * (row + 0.5);
    }
  EXPECT_NEAR(sum / (30 * 40 * 255), 1, 0.02);
  EXPECT_NEAR(x / sum, bitmap.width() / 2.0, 0.1);
  EXPECT_NEAR(y / sum, bitmap.height() / 2.0, 0.1);
}
INSTANTIATE_TEST_SUITE_P(ImageFilter, BlurOfRadius, testing::Values(0.5, 2.0, 5.0, 12.0));

TEST(ImageFilter, GaussianBlurHasTheDeviationAsked) {
  // A wide edge: at one deviation from it the integral of the bell is 0.8413.
  for (const double sigma : {3.0, 20.0}) {
    ImageGraph g;
    const QString blur = g.filter("CIGaussianBlur", {{text("inputRadius"), sigma}});
    g.into(g.rectangle(colorValue(1, 1, 1), 0, 0, 400, 400), blur);
    const Image image = g.result(blur);
    const auto place = static_cast<int>(sigma);
    const double value = (at(image, place, 200)[3] + at(image, place - 1, 200)[3]) / 510.0;
    EXPECT_NEAR(value, 0.8413, 0.01) << sigma;
  }
}

TEST(ImageFilter, BoxBlurAveragesTheSquare) {
  ImageGraph g;
  const QString blur = g.filter("CIBoxBlur", {{text("inputRadius"), 1.0}});
  g.into(g.rectangle(colorValue(1, 1, 1), 0, 0, 1, 1), blur);
  const Image image = g.result(blur);
  EXPECT_EQ(image.extent(), QRect(-1, -1, 3, 3));
  for (int y = -1; y < 2; ++y)
    for (int x = -1; x < 2; ++x) EXPECT_EQ(at(image, x, y)[3], 28);  // 255 / 9
}

TEST(ImageFilter, ColourFiltersWorkOnStraightComponents) {
  struct Case {
    const char* name;
    PropertyDictionary inputs;
    Rgba expected;
  };
  // Straight (.8, .4, .2) with alpha .5.
  const Case cases[] = {
      {"CIColorInvert", {}, {26, 77, 102, 128}},
      {"CIExposureAdjust", {{text("inputEV"), -1.0}}, {51, 26, 13, 128}},
      {"CIGammaAdjust", {{text("inputPower"), 2.0}}, {82, 20, 5, 128}},
      {"CIColorControls", {{text("inputBrightness"), 0.1}}, {115, 64, 38, 128}},
      {"CIColorControls", {{text("inputContrast"), 2.0}}, {128, 38, 0, 128}},
      {"CIHueAdjust", {{text("inputAngle"), 0.0}}, {102, 51, 26, 128}},
      {"CIMaximumComponent", {}, {102, 102, 102, 128}},
      {"CIColorPosterize", {{text("inputLevels"), 2.0}}, {128, 0, 0, 128}},
      {"CIColorMatrix",
       {{text("inputRVector_X"), 0.0}, {text("inputRVector_Z"), 1.0}},
       {26, 51, 26, 128}},
      {"CIColorMonochrome", {{text("inputIntensity"), 0.0}}, {102, 51, 26, 128}},
  };
  for (const Case& c : cases) {
    ImageGraph g;
    const QString node = g.filter(c.name, c.inputs);
    g.into(g.rectangle(colorValue(0.8, 0.4, 0.2, 0.5), 0, 0, 2, 2), node);
    const Rgba got = at(g.result(node), 0, 0);
    for (size_t i = 0; i < 4; ++i)
      EXPECT_NEAR(got[i], c.expected[i], 1) << c.name << " component " << i;
  }
}

TEST(ImageFilter, BypassAndNormalisedCoordinates) {
  ImageGraph g;
  const QString inverted =
      g.filter("CIColorInvert", {{text("inputBypass"), true}}, {{text("hasBypass"), 1}});
  g.into(g.rectangle(colorValue(1, 0, 0), 0, 0, 40, 20), inverted);
  const QString half = g.filter("CICrop",
                                {{text("inputRectangle_X"), 0.5},
                                 {text("inputRectangle_Z"), 0.5},
                                 {text("inputRectangle_W"), 0.25}},
                                {{text("normalizeCoordinates"), 1}});
  g.into(inverted, half);
  const Image image = g.result(half);
  EXPECT_EQ(image.extent(), QRect(20, 0, 20, 5));
  EXPECT_EQ(at(image, 20, 0), (Rgba{255, 0, 0, 255}));
}

TEST(ImageFilter, TransformsAboutItsOriginInDegrees) {
  ImageGraph g;
  const QString turned = g.filter("CIAffineTransform", {{text("inputTransform_OriginX"), 10.0},
                                                        {text("inputTransform_OriginY"), 0.0},
                                                        {text("inputTransform_ScaleX"), 2.0},
                                                        {text("inputTransform_Rotate"), 90.0},
                                                        {text("inputTransform_TranslateY"), 5.0}});
  g.into(g.rectangle(colorValue(1, 1, 1), 10, 0, 4, 2), turned);
  const Image image = g.result(turned);
  // 8 × 2 to the right of the origin, turned counter-clockwise: above it, to the left.
  EXPECT_EQ(image.extent(), QRect(8, 5, 2, 8));
  EXPECT_EQ(at(image, 8, 6)[3], 255);
  EXPECT_EQ(at(image, 9, 11)[3], 255);
}

TEST(ImageFilter, ClampAndTileGoOnForEver) {
  const auto build = [](const char* name) {
    ImageGraph g;
    const QString node = g.filter(name);
    const QString both = g.filter("CIAdditionCompositing");
    g.into(g.rectangle(colorValue(1, 0, 0), 0, 0, 2, 4), both);
    g.into(g.rectangle(colorValue(0, 1, 0), 2, 0, 2, 4), both, "inputBackgroundImage");
    g.into(both, node);
    return g.result(node);
  };
  const Image clamped = build("CIAffineClamp");
  EXPECT_TRUE(clamped.isInfinite());
  EXPECT_EQ(at(clamped, -90, 2)[0], 255);
  EXPECT_EQ(at(clamped, 90, -90)[1], 255);
  const Image tiles = build("CIAffineTile");
  EXPECT_EQ(at(tiles, -1, 50)[1], 255);
  EXPECT_EQ(at(tiles, 5, -50)[0], 255);
}

TEST(ImageFilter, ResizeModesAndConditions) {
  const auto resized = [](quint64 mode, quint64 condition, quint64 w, quint64 h) {
    GraphBuilder g;
    const QString color = g.node(text("QCImageFilter:CIConstantColorGenerator"));
    const QString crop =
        g.node(text("QCImageCrop"), {},
               {{text("inputRectangle_Z"), 40.0}, {text("inputRectangle_W"), 20.0}});
    const QString resize = g.node(text("QCImageResize"), {},
                                  {{text("inputMode"), PropertyValue(mode)},
                                   {text("inputCondition"), PropertyValue(condition)},
                                   {text("inputWidth"), PropertyValue(w)},
                                   {text("inputHeight"), PropertyValue(h)}});
    g.connect(color, text("outputImage"), crop, text("inputImage"));
    g.connect(crop, text("outputImage"), resize, text("inputImage"));
    g.publishOutput(resize, text("outputImage"), text("result"));
    const auto renderer = g.renderer();
    (void)renderer->renderAtTime(0, QSize(10, 10));
    const Image image = renderer->valueForOutputKey(text("result")).toImage();
    EXPECT_EQ(image.bitmap().size(), image.size());
    return image.extent();
  };
  EXPECT_EQ(resized(0, 0, 10, 30), QRect(0, 0, 10, 30));
  EXPECT_EQ(resized(1, 0, 30, 30), QRect(0, 0, 30, 15));
  EXPECT_EQ(resized(2, 0, 30, 30), QRect(0, 0, 30, 30));
  EXPECT_EQ(resized(0, 0, 0, 10), QRect(0, 0, 20, 10));
  EXPECT_EQ(resized(0, 1, 10, 10), QRect(0, 0, 40, 20));  // already bigger
  EXPECT_EQ(resized(0, 2, 100, 100), QRect(0, 0, 40, 20));
}

TEST(ImageFilter, UnknownFiltersAreCountedAsUnknown) {
  GraphBuilder g;
  const QString node = g.node(text("QCImageFilter:CINoSuchFilter"));
  g.publishOutput(node, text("outputImage"), text("result"));
  const auto renderer = g.renderer();
  ASSERT_EQ(renderer->compiled().patchUses().size(), 1);
  EXPECT_FALSE(renderer->compiled().patchUses()[0].known);
}

TEST(ImageFilter, NoImageGivesNoImageAndFeedbackOfFiltersStaysBounded) {
  ImageGraph g;
  EXPECT_TRUE(g.result(g.filter("CIGaussianBlur")).isNull());

  // A chain longer than any stack: each filter takes the result of the last one twice.
  ImageGraph chain;
  QString last = chain.rectangle(colorValue(1, 0, 0), 0, 0, 4, 4);
  for (int i = 0; i < 300; ++i) {
    const QString next = chain.filter("CISourceOverCompositing");
    chain.into(last, next);
    chain.into(last, next, "inputBackgroundImage");
    last = next;
  }
  EXPECT_EQ(at(chain.result(last), 1, 1), (Rgba{255, 0, 0, 255}));

  // Endless images cannot be computed ahead: such a graph gives nothing instead of taking for ever.
  ImageGraph endless;
  last = endless.filter("CIConstantColorGenerator");
  for (int i = 0; i < 100; ++i) {
    const QString next = endless.filter("CISourceOverCompositing");
    endless.into(last, next);
    endless.into(last, next, "inputBackgroundImage");
    last = next;
  }
  EXPECT_TRUE(endless.result(last).isNull());
}
