#include "widgets/TYGlyph.h"

#include <gtest/gtest.h>

#include <QPainter>

#include "widgets/OutlineParser.h"
#include "widgets/TYStyleKit.h"

using namespace widgets;

namespace {

constexpr int kMargin = 4;

// The glyph in the middle of a transparent picture with a margin around it.
QImage painted(const QString& name, int side) {
  QImage image(side + 2 * kMargin, side + 2 * kMargin, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  TYGlyph::paint(painter, name, QRectF(kMargin, kMargin, side, side), Qt::red);
  return image;
}

int inkedPixels(const QImage& image, const QRect& within) {
  int count = 0;
  for (int y = within.top(); y <= within.bottom(); ++y)
    for (int x = within.left(); x <= within.right(); ++x) count += qAlpha(image.pixel(x, y)) > 0;
  return count;
}

}  // namespace

TEST(TYGlyphTest, eachPaintsInsideItsBoxAndNothingOutside) {
  EXPECT_GE(TYGlyph::names().size(), 79);
  for (const QString& name : TYGlyph::names())
    for (const int side : {12, 16, 20, 24, 48}) {
      const QImage image = painted(name, side);
      const int inside = inkedPixels(image, QRect(kMargin, kMargin, side, side));
      EXPECT_GT(inside, side / 4) << name.toStdString() << " at " << side;
      EXPECT_LT(inside, side * side) << name.toStdString() << " at " << side;
      EXPECT_EQ(inkedPixels(image, image.rect()), inside) << name.toStdString() << " at " << side;
    }
}

TEST(TYGlyphTest, theEditorsTwentyImagesAreThere) {
  const QStringList names = TYGlyph::registeredNames();
  EXPECT_EQ(names.size(), 20);
  EXPECT_EQ(names.constFirst(), QStringLiteral("ToolbarAlignLeft"));
  EXPECT_EQ(names.constLast(), QStringLiteral("TimelineEnd"));
  for (const QString& name : names)
    EXPECT_FALSE(TYStyleKit::image(name).isNull()) << name.toStdString();
  EXPECT_TRUE(TYStyleKit::image(QStringLiteral("NoSuchThing")).isNull());
}

TEST(TYGlyphTest, verticalAlignGlyphsAreTheHorizontalOnesMirrored) {
  const QImage left = painted(QStringLiteral("AlignLeft"), 16);
  const QImage top = painted(QStringLiteral("AlignTop"), 16);
  for (int y = 0; y < top.height(); ++y)
    for (int x = 0; x < top.width(); ++x)
      EXPECT_NEAR(qAlpha(top.pixel(x, y)), qAlpha(left.pixel(y, x)), 16) << x << ", " << y;
  EXPECT_NE(left, top);
}

TEST(TYGlyphTest, solidPartsKeepARealGapOnAnyGround) {
  QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::blue);
  QPainter painter(&image);
  TYGlyph::paint(painter, QStringLiteral("RemoveKeyframe"), image.rect(), Qt::red);
  painter.end();
  // The minus in the middle is cut out; the ground shows through.
  EXPECT_EQ(image.pixelColor(24, 24), QColor(Qt::blue));
  EXPECT_EQ(image.pixelColor(24, 14), QColor(Qt::red));
}

TEST(TYGlyphTest, linesOnHalfUnitsAreSharpAtWholeScales) {
  const QImage image = painted(QStringLiteral("TextLeft"), 16);
  // A stroke of one unit around y 3.5 fills one row of pixels and leaves its neighbours alone.
  EXPECT_EQ(qAlpha(image.pixel(kMargin + 8, kMargin + 3)), 255);
  EXPECT_EQ(qAlpha(image.pixel(kMargin + 8, kMargin + 2)), 0);
  EXPECT_EQ(qAlpha(image.pixel(kMargin + 8, kMargin + 4)), 0);
}

TEST(TYGlyphTest, iconsTakeTheColourOfTheirState) {
  TYStyleKit::shared().setAppearance(TYStyleKit::Appearance::Dark);
  const QIcon icon = TYStyleKit::image(QStringLiteral("TimelineStop"), Token::Text);
  const auto middle = [&icon](QIcon::Mode mode, QIcon::State state) {
    return icon.pixmap(QSize(32, 32), 2.0, mode, state).toImage().pixelColor(32, 32);
  };
  EXPECT_EQ(middle(QIcon::Normal, QIcon::Off), TYStyleKit::colour(Token::Text));
  EXPECT_EQ(middle(QIcon::Normal, QIcon::On), TYStyleKit::colour(Token::Accent));
  EXPECT_EQ(middle(QIcon::Disabled, QIcon::Off), TYStyleKit::colour(Token::TextDisabled));
  TYStyleKit::shared().setAppearance(TYStyleKit::Appearance::Light);
  EXPECT_EQ(middle(QIcon::Normal, QIcon::Off), QColor(0x191A1E));
  TYStyleKit::shared().setAppearance(TYStyleKit::Appearance::Dark);
}

TEST(OutlineParserTest, readsCommandsAndRefusesWhatItDoesNotKnow) {
  const auto box = parseOutline(u"M1 2H5V8L1 8Z");
  ASSERT_TRUE(box);
  EXPECT_EQ(box->boundingRect(), QRectF(1, 2, 4, 6));
  const auto arc = parseOutline(u"M4 8A4 4 0 0 1 12 8");
  ASSERT_TRUE(arc);
  EXPECT_NEAR(arc->boundingRect().top(), 4, 0.01);
  EXPECT_NEAR(parseOutline(u"M4 8A4 4 0 0 0 12 8")->boundingRect().bottom(), 12, 0.01);
  for (const char16_t* bad : {u"M1", u"1 2", u"M1 2X3 4", u"M1 2L", u"M1 2L3 -", u"R1 2 3"})
    EXPECT_FALSE(parseOutline(bad)) << QString::fromUtf16(bad).toStdString();
}
