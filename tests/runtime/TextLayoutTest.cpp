#include "runtime/text/TextLayout.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <limits>

#include "runtime/text/TextImage.h"
#include "support/GoldenImage.h"

using runtime::TextAlignment;
using runtime::TextLayout;
using runtime::TextStyle;

namespace {

constexpr qint64 pixelLimit = 64'000'000;

TextStyle styleOf(const char* font, double size) {
  TextStyle style;
  style.fontName = QString::fromLatin1(font);
  style.size = size;
  style.horizontal = TextAlignment::Normal;
  return style;
}

TextLayout layoutOf(const QString& text, const TextStyle& style) {
  return TextLayout::make(text, style, pixelLimit);
}

TextLayout layoutOf(const QString& text, double size = 40) {
  return layoutOf(text, styleOf("Inter-Regular", size));
}

/// The box around the outlines, of all or of those in a range of heights (pixels from the top).
QRectF inkOf(const TextLayout& layout, double top = -1e6, double bottom = 1e6) {
  QRectF ink;
  for (const QPainterPath& outline : layout.outlines) {
    const QRectF box = outline.boundingRect();
    if (box.center().y() > top && box.center().y() < bottom) ink |= box;
  }
  return ink;
}

/// The picture on a dark ground, as it would be seen.
QImage seen(const TextLayout& layout) {
  const runtime::TextImage image(layout);
  return image.bitmap();
}

const QString pangram = QStringLiteral(
    "The harbour bridge reopens to traffic tonight after eleven weeks of repairs; the port "
    "authority expects queues until morning.\nSecond paragraph.");

}  // namespace

TEST(TextLayout, AdvancesAreInProportionToTheSize) {
  const QString text = QStringLiteral("Wafer AV 1234567890").repeated(10);
  const double width = inkOf(layoutOf(text, 100)).width();
  for (const double size : {10.0, 10.3, 36.0, 36.5, 66.25})
    EXPECT_NEAR(inkOf(layoutOf(text, size)).width(), width * size / 100, 0.05) << size;
}

TEST(TextLayout, KerningPairsAndKerningShift) {
  EXPECT_LT(layoutOf(QStringLiteral("AVAVAVAV")).size.width(),
            layoutOf(QStringLiteral("AAAAVVVV")).size.width() - 5);
  TextStyle style = styleOf("Inter-Regular", 40);
  const int plain = layoutOf(QStringLiteral("HHHHHHHHHH"), style).size.width();
  style.kerning = 2.5;
  EXPECT_NEAR(layoutOf(QStringLiteral("HHHHHHHHHH"), style).size.width(), plain + 25, 1);
  style.kerning = -2.5;
  const TextLayout closer = layoutOf(QStringLiteral("HHHHHHHHHH"), style);
  EXPECT_NEAR(closer.size.width(), plain - 22.5, 1.01);
  EXPECT_LT(inkOf(closer).right(), closer.size.width()) << "the last letter is cut";
}

TEST(TextLayout, CombiningMarksAddNoAdvance) {
  EXPECT_EQ(layoutOf(QStringLiteral("xe\u0301x")).size, layoutOf(QStringLiteral("xex")).size);
  EXPECT_EQ(layoutOf(QStringLiteral("xe\u0301x")).glyphCount, 3);
}

TEST(TextLayout, SpacesAtTheEndCountOnlyWhereTheTextEnds) {
  EXPECT_GT(layoutOf(QStringLiteral("a  ")).size.width(),
            layoutOf(QStringLiteral("a")).size.width() + 10);
  TextStyle style = styleOf("Inter-Regular", 40);
  style.width = 100;
  style.horizontal = TextAlignment::Opposite;
  EXPECT_NEAR(inkOf(layoutOf(QStringLiteral("aaa bbbbb"), style)).right(), 100, 4);
}

TEST(TextLayout, LinesStandAtTheFontsDistance) {
  // Inter: ascent 2728, descent 680, no gap, of 2816 an em.
  const double line = 40 * (2728 + 680) / 2816.0;
  EXPECT_EQ(layoutOf(QStringLiteral("H")).size.height(), std::ceil(line));
  EXPECT_EQ(layoutOf(QStringLiteral("H\nH\n\nH")).size.height(), std::ceil(4 * line));
  EXPECT_EQ(layoutOf(QStringLiteral("H\nH\n\nH")).lineCount, 4);
  TextStyle style = styleOf("Inter-Regular", 40);
  style.leading = 10;
  EXPECT_EQ(layoutOf(QStringLiteral("H\nH"), style).size.height(), std::ceil(2 * line + 10));
  style.leading = -20;
  EXPECT_EQ(layoutOf(QStringLiteral("H\nH"), style).size.height(), std::ceil(2 * line - 20));
  style.leading = -1000;  // lines never run upwards
  EXPECT_EQ(layoutOf(QStringLiteral("H\nH"), style).size.height(), std::ceil(line));
}

TEST(TextLayout, WrapsAtWordsAndInsideWordsThatAreTooLong) {
  TextStyle style = styleOf("Inter-Regular", 40);
  style.width = 200;
  EXPECT_EQ(layoutOf(QStringLiteral("aaaa bbbb cccc"), style).lineCount, 2);
  EXPECT_EQ(layoutOf(QStringLiteral("aaaa bbbb cccc"), style).size.width(), 200);
  EXPECT_GE(layoutOf(QString(60, QLatin1Char('m')), style).lineCount, 10);
  // A text wrapped at the width that was measured for it stays on one line.
  style.width = layoutOf(pangram.section(QLatin1Char('\n'), 0, 0)).size.width();
  EXPECT_EQ(layoutOf(pangram.section(QLatin1Char('\n'), 0, 0), style).lineCount, 1);
}

TEST(TextLayout, LinesThatDoNotFitTheHeightAreLeftOut) {
  TextStyle style = styleOf("Inter-Regular", 40);
  style.width = 300;
  const TextLayout whole = layoutOf(pangram, style);
  style.height = 48.4 * 3;
  const TextLayout cut = layoutOf(pangram, style);
  EXPECT_GT(whole.lineCount, 3);
  EXPECT_EQ(cut.lineCount, 3);
  EXPECT_LT(cut.glyphCount, whole.glyphCount);
  EXPECT_EQ(cut.size, QSize(300, 145));
  style.height = 30;
  EXPECT_EQ(layoutOf(pangram, style).lineCount, 0);
  EXPECT_EQ(layoutOf(pangram, style).size, QSize(300, 30));
}

TEST(TextLayout, AlignsInTheDirectionOfReading) {
  TextStyle style = styleOf("Inter-Regular", 40);
  style.width = 400;
  style.height = 200;
  const auto ink = [&](const QString& text, TextAlignment horizontal, TextAlignment vertical) {
    style.horizontal = horizontal;
    style.vertical = vertical;
    return inkOf(layoutOf(text, style));
  };
  using enum TextAlignment;
  const QString latin = QStringLiteral("HH");
  const QString hebrew = QStringLiteral("םם");
  EXPECT_LT(ink(latin, Normal, Normal).left(), 8);
  EXPECT_GT(ink(latin, Opposite, Normal).right(), 392);
  EXPECT_NEAR(ink(latin, Centered, Normal).center().x(), 200, 1);
  EXPECT_LT(ink(latin, Justified, Normal).left(), 8);
  EXPECT_GT(ink(hebrew, Normal, Normal).right(), 392);
  EXPECT_LT(ink(hebrew, Opposite, Normal).left(), 8);
  EXPECT_GT(ink(hebrew, Justified, Normal).right(), 392);
  EXPECT_LT(ink(latin, Normal, Normal).bottom(), 45);
  EXPECT_GT(ink(latin, Normal, Opposite).top(), 155);
  EXPECT_NEAR(ink(latin, Normal, Centered).center().y(), 100, 4);
  // A paragraph without letters goes with the rest of the text.
  EXPECT_LT(ink(QStringLiteral("12\nHH"), Normal, Normal).right(), 100);
  EXPECT_GT(ink(QStringLiteral("12\nםם"), Normal, Normal).left(), 300);
}

TEST(TextLayout, JustifiedLinesFillTheWidthInBothDirections) {
  const QString arabic = QStringLiteral(
      "إعادة فتح جسر الميناء أمام حركة المرور الليلة بعد أحد عشر أسبوعا من الإصلاحات");
  for (const auto& [text, font] :
       {std::pair{pangram, "Inter-Regular"}, std::pair{arabic, "NotoSansArabic-Regular"}}) {
    TextStyle style = styleOf(font, 30);
    style.width = 500;
    style.horizontal = TextAlignment::Justified;
    const TextLayout layout = layoutOf(text, style);
    ASSERT_GE(layout.lineCount, 2);
    const double distance = layout.size.height() / static_cast<double>(layout.lineCount);
    const QRectF first = inkOf(layout, 0, distance);
    EXPECT_NEAR(first.left(), 0, 3.5) << font;
    EXPECT_NEAR(first.right(), 500, 3.5) << font;
    EXPECT_LT(inkOf(layout, layout.size.height() - distance).width(), 485) << font;
  }
}

TEST(TextLayout, ArabicLettersJoin) {
  const TextStyle style = styleOf("NotoSansArabic-Regular", 60);
  // A zero-width non-joiner keeps them apart: three round letters instead of a connected word.
  const double apart = inkOf(layoutOf(QStringLiteral("ه\u200Cه\u200Cه"), style)).width();
  const double joined = inkOf(layoutOf(QStringLiteral("ههه"), style)).width();
  EXPECT_GT(std::abs(joined - apart), apart * 0.05);
}

TEST(TextLayout, AWordInAnotherScriptKeepsTheLineHeightUnlessItsInkNeedsMore) {
  EXPECT_LE(layoutOf(QStringLiteral("Harbour ميناء 👍 שלום")).size.height(), 55);
  const TextLayout thai = layoutOf(QStringLiteral("Harbour ที่นี้"));
  EXPECT_GE(inkOf(thai).top(), -1);
  EXPECT_LE(inkOf(thai).bottom(), thai.size.height());
}

TEST(TextLayout, EmojiKeepTheirColours) {
  const TextLayout layout = layoutOf(QStringLiteral("🔴"));
  ASSERT_EQ(layout.pictures.size(), 1U);
  EXPECT_TRUE(layout.outlines.empty());
  const QImage image = seen(layout);
  const QColor middle = image.pixelColor(image.rect().center());
  EXPECT_GT(middle.red(), 180);
  EXPECT_LT(middle.green(), 100);
  EXPECT_LT(middle.blue(), 100);
  // A sequence is one picture.
  EXPECT_EQ(layoutOf(QStringLiteral("👩‍👩‍👧")).glyphCount, 1);
  EXPECT_EQ(layoutOf(QStringLiteral("🏳️‍🌈🇩🇪1️⃣")).glyphCount, 3);
}

TEST(TextLayout, NothingToShowHasNoSize) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(layoutOf(QString()).size.isEmpty());
  EXPECT_TRUE(layoutOf(QStringLiteral("a"), 0).size.isEmpty());
  EXPECT_TRUE(layoutOf(QStringLiteral("a"), -5).size.isEmpty());
  EXPECT_TRUE(layoutOf(QStringLiteral("a"), nan).size.isEmpty());
  TextStyle odd = styleOf("Inter-Regular", 40);
  odd.width = odd.height = odd.kerning = odd.leading = nan;
  EXPECT_EQ(layoutOf(QStringLiteral("a"), odd).size, layoutOf(QStringLiteral("a")).size);
}

TEST(TextLayout, AbsurdSizesAreReportedInsteadOfDrawn) {
  const QString text = QStringLiteral("Wide text");
  EXPECT_TRUE(layoutOf(text, 1e7).problem.contains(QLatin1String("too large")));
  EXPECT_TRUE(layoutOf(text, 1e7).size.isEmpty());
  TextStyle style = styleOf("Inter-Regular", 40);
  style.width = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(layoutOf(text, style).problem.contains(QLatin1String("too large")));
  style.width = style.height = 1000;
  EXPECT_TRUE(
      TextLayout::make(text, style, 999'999).problem.contains(QStringLiteral("1000 × 1000")));
  style.kerning = 1e9;
  EXPECT_EQ(layoutOf(text, style).size, QSize(1000, 1000));
}

TEST(TextLayout, AMegabyteOfTextIsSetInReasonableTime) {
  TextStyle style = styleOf("Inter-Regular", 20);
  style.width = 1800;
  style.height = 1000;
  QElapsedTimer timer;
  timer.start();
  const TextLayout filled = layoutOf(QStringLiteral("word ").repeated(200'000), style);
  EXPECT_GT(filled.lineCount, 35);
  EXPECT_TRUE(filled.problem.contains(QLatin1String("first 100000 of 1000000")));
  EXPECT_FALSE(layoutOf(QString(1'000'000, QLatin1Char('x'))).problem.isEmpty());
  EXPECT_TRUE(layoutOf(QString(1'000'000, QLatin1Char('\n'))).size.isEmpty());
  EXPECT_FALSE(layoutOf(QStringLiteral("ال ab हि ").repeated(100'000)).problem.isEmpty());
  style.size = 36;
  EXPECT_FALSE(layoutOf(QStringLiteral("ال abс ไทย ").repeated(100'000), style).problem.isEmpty());
  EXPECT_LT(timer.elapsed(), 15'000) << "a sanitizer build on a busy machine takes less";
}

TEST(TextLayout, CharactersThatNoFontHasAreNamed) {
  EXPECT_TRUE(layoutOf(QStringLiteral("a\U0010FFFDb")).problem.contains(QLatin1String("U+10FFFD")));
  EXPECT_TRUE(layoutOf(QStringLiteral("Zürich → هنا 😀 हिन्दी")).problem.isEmpty());
}

TEST(TextImage, AreasAreCutFromTheWhole) {
  const runtime::TextImage image(layoutOf(QStringLiteral("Hy\nHg")));
  const QRect area(10, 5, 20, 30);
  const QImage whole = image.bitmap();
  EXPECT_EQ(image.pixels(area), whole.copy(10, whole.height() - 35, 20, 30));
}

TEST(TextImage, EqualTextsAreSetOnce) {
  const TextStyle style = styleOf("Inter-Regular", 31);
  const auto first = runtime::sharedTextImage(QStringLiteral("once"), style, pixelLimit);
  EXPECT_EQ(first, runtime::sharedTextImage(QStringLiteral("once"), style, pixelLimit));
  TextStyle other = style;
  other.kerning = 0.001;
  EXPECT_NE(first, runtime::sharedTextImage(QStringLiteral("once"), other, pixelLimit));
}

TEST(TextImage, GoldenPictures) {
  support::expectGolden(
      seen(layoutOf(QStringLiteral("Harbour Master"), styleOf("InterDisplay-Bold", 66))),
      QStringLiteral("text-latin"));
  support::expectGolden(seen(layoutOf(QStringLiteral("إعادة فتح جسر الميناء أمام حركة المرور"),
                                      styleOf("NotoSansArabic-Bold", 44))),
                        QStringLiteral("text-arabic"));
  support::expectGolden(
      seen(layoutOf(QStringLiteral("Inter: العربية 123 (نص) mixed שלום हिन्दी ไทย end"),
                    styleOf("Inter-Medium", 36))),
      QStringLiteral("text-mixed"));
  support::expectGolden(
      seen(layoutOf(
          QStringLiteral(
              "Live 🔴 from Zürich ☀️ 🏳️‍🌈 🇩🇪 👍🏽 1️⃣ ❤ ☎"),
          styleOf("Inter-Medium", 36))),
      QStringLiteral("text-emoji"));
  TextStyle block = styleOf("Inter-Regular", 24);
  block.width = 420;
  block.horizontal = TextAlignment::Justified;
  support::expectGolden(seen(layoutOf(pangram, block)), QStringLiteral("text-justified"));
}
