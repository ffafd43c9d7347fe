#include <gtest/gtest.h>

#include "support/GraphBuilder.h"

using foundation::PropertyDictionary;
using runtime::CompositionRenderer;
using runtime::Value;
using support::GraphBuilder;

namespace {

const QSize hd(1920, 1080);

/// A composition whose only node is a text; the string is a published input.
std::unique_ptr<CompositionRenderer> textRenderer(PropertyDictionary state,
                                                  const PropertyDictionary& inputs) {
  GraphBuilder graph;
  const QString node = graph.node(QStringLiteral("QCTextImage"), state, inputs);
  graph.publishInput(node, QStringLiteral("inputString"), QStringLiteral("text"));
  for (const char* port : {"Image", "Width", "Height", "LineCount", "GlyphCount"})
    graph.publishOutput(node, QStringLiteral("output") + QString::fromLatin1(port),
                        QString::fromLatin1(port));
  return graph.renderer();
}

Value output(CompositionRenderer& renderer, const char* key) {
  return renderer.valueForOutputKey(QString::fromLatin1(key));
}

void show(CompositionRenderer& renderer, const QString& text, const QSize& size = hd) {
  renderer.setValueForInputKey(Value(text), QStringLiteral("text"));
  (void)renderer.renderAtTime(0, size);
}

}  // namespace

TEST(TextImagePatch, UnitsScaleWithTheDestination) {
  const auto renderer =
      textRenderer({}, {{QStringLiteral("inputFontName"), QStringLiteral("Inter-Bold")},
                        {QStringLiteral("inputGlyphSize"), 0.1}});
  show(*renderer, QStringLiteral("Harbour"));
  const QSize large = output(*renderer, "Image").toImage().size();
  EXPECT_EQ(large.height(), 117);  // 96 pixels of an em, 1.21 ems a line
  EXPECT_DOUBLE_EQ(output(*renderer, "Width").toNumber(), large.width() / 960.0);
  EXPECT_DOUBLE_EQ(output(*renderer, "Height").toNumber(), 117 / 960.0);
  EXPECT_EQ(output(*renderer, "LineCount").toIndex(), 1U);
  EXPECT_EQ(output(*renderer, "GlyphCount").toIndex(), 7U);
  (void)renderer->renderAtTime(0, hd / 2);
  EXPECT_NEAR(output(*renderer, "Image").toImage().size().width(), large.width() / 2.0, 1);
  EXPECT_FALSE(renderer->isAnimated());
}

TEST(TextImagePatch, PixelModeGivesPixelsButReportsUnits) {
  const auto renderer = textRenderer({{QStringLiteral("manualLayout"), true}},
                                     {{QStringLiteral("inputGlyphSize"), 36},
                                      {QStringLiteral("inputWidth"), 600},
                                      {QStringLiteral("inputHeight"), 100}});
  show(*renderer, QStringLiteral("Port authority"));
  EXPECT_EQ(output(*renderer, "Image").toImage().size(), QSize(600, 100));
  EXPECT_DOUBLE_EQ(output(*renderer, "Width").toNumber(), 600 / 960.0);
  EXPECT_DOUBLE_EQ(output(*renderer, "Height").toNumber(), 100 / 960.0);
}

TEST(TextImagePatch, AlignmentComesFromTheState) {
  const auto inkCentre = [](const char* horizontal, const char* vertical) {
    PropertyDictionary state{{QStringLiteral("manualLayout"), true}};
    if (*horizontal) {
      state.insert(QStringLiteral("horizontalAlignment"), QString::fromLatin1(horizontal));
      state.insert(QStringLiteral("verticalAlignment"), QString::fromLatin1(vertical));
    }
    const auto renderer = textRenderer(state, {{QStringLiteral("inputGlyphSize"), 40},
                                               {QStringLiteral("inputWidth"), 400},
                                               {QStringLiteral("inputHeight"), 200}});
    show(*renderer, QStringLiteral("HH"));
    const QImage image = output(*renderer, "Image").toImage().bitmap();
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x)
        if (qAlpha(image.pixel(x, y)) > 127) ink |= QRect(x, y, 1, 1);
    return ink.center();
  };
  EXPECT_NEAR(inkCentre("", "").x(), 200, 2);  // both centred by default
  EXPECT_NEAR(inkCentre("", "").y(), 100, 4);
  EXPECT_LT(inkCentre("Normal", "Normal").x(), 60);
  EXPECT_LT(inkCentre("Normal", "Normal").y(), 40);
  EXPECT_GT(inkCentre("Opposite", "Opposite").x(), 340);
  EXPECT_GT(inkCentre("Opposite", "Opposite").y(), 160);
}

TEST(TextImagePatch, AnEmptyStringHasNoImage) {
  const auto renderer = textRenderer({}, {});
  show(*renderer, QStringLiteral("a"));
  EXPECT_FALSE(output(*renderer, "Image").toImage().isNull());
  show(*renderer, QString());
  EXPECT_TRUE(output(*renderer, "Image").toImage().isNull());
  EXPECT_EQ(output(*renderer, "Width").toNumber(), 0);
  EXPECT_EQ(output(*renderer, "LineCount").toIndex(), 0U);
}

TEST(TextImagePatch, TheStatesCopiesCountWhereThePortHasNoValue) {
  const PropertyDictionary state{{QStringLiteral("fontName"), QStringLiteral("Inter-Bold")},
                                 {QStringLiteral("fontSize"), 0.2}};
  const auto copied = textRenderer(state, {});
  const auto stored = textRenderer(state, {{QStringLiteral("inputGlyphSize"), 0.1}});
  show(*copied, QStringLiteral("H"));
  show(*stored, QStringLiteral("H"));
  EXPECT_EQ(output(*copied, "Image").toImage().size().height(), 233);
  EXPECT_EQ(output(*stored, "Image").toImage().size().height(), 117);
}

TEST(TextImagePatch, ReportsMissingFontsAndAbsurdSizesOnce) {
  const auto renderer =
      textRenderer({}, {{QStringLiteral("inputFontName"), QStringLiteral("Frobnicate-Bold")}});
  show(*renderer, QStringLiteral("a"));
  show(*renderer, QStringLiteral("b"));
  ASSERT_EQ(renderer->findings().size(), 1);
  EXPECT_TRUE(renderer->findings().constFirst().contains(
      QStringLiteral("the font “Frobnicate-Bold” is not installed; Inter stands in")));
  const auto huge = textRenderer({}, {{QStringLiteral("inputGlyphSize"), 1e6}});
  show(*huge, QStringLiteral("a"));
  EXPECT_TRUE(output(*huge, "Image").toImage().isNull());
  ASSERT_EQ(huge->findings().size(), 1) << "the default font is replaced quietly";
  EXPECT_TRUE(huge->findings().constFirst().contains(QLatin1String("too large")));
}

TEST(TextImagePatch, TextIsSetAgainOnlyWhenItChanges) {
  const auto renderer = textRenderer({}, {});
  show(*renderer, QStringLiteral("still"));
  const runtime::Image first = output(*renderer, "Image").toImage();
  (void)renderer->renderAtTime(1, hd);
  EXPECT_EQ(output(*renderer, "Image").toImage(), first);
}
