#include <QTimeZone>

#include "ComponentPlayer.h"
#include "support/GoldenImage.h"

namespace {

using namespace support;

/// A headline as lower thirds set it.
ComponentPlayer headline(const char16_t* words) {
  return ComponentPlayer("Text", {{"inputWidth", size(520)},
                                  {"inputHeight", size(80)},
                                  {"Text", text(words)},
                                  {"Font_Name", text(u"InterDisplay-Bold")},
                                  {"Font_Size", 66.0},
                                  {"Smallest_Size", 46.0}});
}

TEST(TextPictures, LongTextShrinksAndThenEndsInAnEllipsis) {
  expectGolden(ComponentPlayer("Text").picture(), QStringLiteral("components/text"));
  expectGolden(headline(u"Harbour Master").picture(), QStringLiteral("components/text-fits"));
  expectGolden(headline(u"Minister for Transport").picture(),
               QStringLiteral("components/text-shrinks"));
  expectGolden(headline(u"Deputy Minister for Transport and Harbours").picture(),
               QStringLiteral("components/text-ellipsis"));
}

/// Columns that hold ink: the first and the last.
std::pair<int, int> ink(const QImage& image) {
  int first = image.width();
  int last = -1;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) > 40) {
        first = std::min(first, x);
        last = std::max(last, x);
      }
  return {first, last};
}

TEST(TextPictures, Justification) {
  ComponentPlayer component = headline(u"HIH");
  const auto left = ink(component.image());
  component.set("Justification", menu(1));
  const auto middle = ink(component.image());
  component.set("Justification", menu(2));
  const auto right = ink(component.image());
  EXPECT_LT(left.first, 8);
  EXPECT_NEAR(middle.first + middle.second, 519, 2);
  EXPECT_NEAR(left.first + right.second, 519, 2);  // the same room on either side
}

TEST(TextPictures, RightToLeft) {
  ComponentPlayer arabic = headline(u"إعادة فتح جسر الميناء أمام حركة المرور");
  arabic.set("Font_Name", text(u"NotoSansArabic-Bold"));
  arabic.set("inputWidth", size(1024));
  arabic.set("inputHeight", size(106));
  arabic.set("Font_Size", 56.0);
  arabic.set("Justification", menu(2));
  expectGolden(arabic.picture(), QStringLiteral("components/text-arabic"));
}

TEST(TextPictures, WrappedTextShrinksToItsBox) {
  ComponentPlayer box("Text", {{"inputWidth", size(420)},
                               {"inputHeight", size(200)},
                               {"Wrap", true},
                               {"Vertical_Alignment", menu(0)},
                               {"Justification", menu(1)},
                               {"Text", text(u"The harbour bridge reopens to traffic after a year "
                                             u"of work on its northern tower")}});
  expectGolden(box.picture(), QStringLiteral("components/text-wrapped"));
  box.set("Smallest_Size", 44.0);
  box.set("Line_Spacing", 1.2);
  expectGolden(box.picture(), QStringLiteral("components/text-wrapped-ellipsis"));
}

/// Figures stand in equal cells: a one takes no less room than a zero, and nothing else moves.
TEST(TextPictures, TabularFiguresDoNotMove) {
  ComponentPlayer one("Clock");
  runtime::FrameArguments early;
  early.wallClock = QDateTime(QDate(2026, 3, 5), QTime(7, 42, 10));
  runtime::FrameArguments late;
  late.wallClock = QDateTime(QDate(2026, 3, 5), QTime(11, 41, 10));
  const QImage first = one.image(0, early);
  const QImage second = one.image(1, late);
  EXPECT_GT(largestDifference(first, second), 100);
  const QRect same(114, 0, 38, 72);  // the colon and the tens of the minutes
  EXPECT_LE(largestDifference(first.copy(same), second.copy(same)), 1);
}

TEST(TextPictures, Clock) {
  runtime::FrameArguments arguments;
  arguments.wallClock = QDateTime(QDate(2026, 3, 5), QTime(7, 42, 10));
  expectGolden(ComponentPlayer("Clock").picture(0, arguments), QStringLiteral("components/clock"));
  ComponentPlayer other(
      "Clock",
      {{"Format", text(u"EEEE d.M.yyyy, h:mm:ss a")}, {"Offset", 5.5}, {"inputWidth", size(900)}});
  expectGolden(other.picture(0, arguments), QStringLiteral("components/clock-long"));
}

TEST(TextPictures, CountdownCountsDownStopsOrGoesOn) {
  ComponentPlayer component("Countdown", {{"Delay", 1.2}});
  expectGolden(component.picture(0), QStringLiteral("components/countdown"));
  const QImage start = component.image(0);
  EXPECT_LE(largestDifference(start, component.image(2.19)), 1);
  EXPECT_GT(largestDifference(start, component.image(2.2)), 100);  // 12:33
  component.set("End", text(u"1:05"));
  component.set("Delay", 0.0);
  expectGolden(component.picture(4), QStringLiteral("components/countdown-61"));
  const QImage end = component.image(65);
  EXPECT_LE(largestDifference(end, component.image(100)), 1);
  component.set("At_End", menu(1));
  EXPECT_GT(largestDifference(end, component.image(100)), 100);  // 00:35
}

TEST(TextPictures, CountdownToATimeOfDay) {
  runtime::FrameArguments arguments;
  arguments.wallClock = QDateTime(QDate(2026, 3, 5), QTime(19, 14, 57));
  ComponentPlayer component(
      "Countdown", {{"Mode", menu(1)}, {"End", text(u"20:15")}, {"Format", text(u"H:mm:ss")}});
  expectGolden(component.picture(0, arguments), QStringLiteral("components/countdown-to-time"));
}

QImage sign() {
  QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xFF, 0xB0, 0x2E));
  painter.drawEllipse(4, 4, 56, 56);
  return image;
}

TEST(TextPictures, TickerRunsWithoutASeam) {
  ComponentPlayer ticker("TextScroller",
                         {{"Strings_1Input", text(u"Bridge lanes open in both directions\n\n"
                                                  u"  Ferry line 4 runs every ten minutes  \n"
                                                  u"Night market returns on Friday")},
                          {"Separator", runtime::Image::fromQImage(sign())},
                          {"Delay", 0.6}});
  expectGolden(ticker.picture(0.6), QStringLiteral("components/ticker-start"));
  expectGolden(ticker.picture(3.6), QStringLiteral("components/ticker-3s"));
  // Whole pixels a frame: the picture moves, and nothing else changes.
  const QImage before = ticker.image(20.0);
  const QImage after = ticker.image(20.04);
  EXPECT_LE(largestDifference(before.copy(8, 0, 1216, 66), after.copy(0, 0, 1216, 66)), 2);
  ticker.set("Direction", menu(1));
  expectGolden(ticker.picture(3.6), QStringLiteral("components/ticker-right"));
  ticker.set("Strings_1Input", text(u" \n"));
  EXPECT_EQ(ink(ticker.image(4)).second, -1);  // nothing
}

TEST(TextPictures, RichText) {
  ComponentPlayer rich("RichText");
  expectGolden(rich.picture(), QStringLiteral("components/rich-text"));
  rich.set("Text", text(u"Harbour\nbridge open"));
  rich.set("Justification", menu(1));
  rich.set("Rich_Font_Color", color(0xFFFFC23C));
  rich.set("Rich_Font_Use_Shadow", 1.0);
  rich.set("Rich_Font_Shadow_Blur_Radius", 8.0);
  rich.set("Rich_Font_Underline_Style", menu(1));
  rich.set("Rich_Font_Underline_Color", color(0xFFFF4040));
  expectGolden(rich.picture(), QStringLiteral("components/rich-text-underlined"));
  rich.set("Rich_Font_Use_Shadow", 2.0);  // only 1 is on
  rich.set("Rich_Font_Underline_Style", menu(9));
  rich.set("Rich_Font_Strikethrough_Style", menu(2));
  rich.set("Rich_Font_Strikethrough_Color", color(0xFFFFFFFF));
  expectGolden(rich.picture(), QStringLiteral("components/rich-text-struck"));
}

}  // namespace
