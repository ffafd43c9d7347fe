// What text costs: the first text of a process, a text that changes in every frame, one that does
// not. Medians of one run each; drawing on one thread.
#include <QElapsedTimer>
#include <QGuiApplication>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include "runtime/text/TextImage.h"

using runtime::TextImage;
using runtime::TextLayout;
using runtime::TextStyle;

namespace {

constexpr qint64 pixelLimit = 64'000'000;

TextStyle styleOf(const char* font, double size) {
  TextStyle style;
  style.fontName = QString::fromLatin1(font);
  style.size = size;
  return style;
}

double medianMilliseconds(const std::function<void(int)>& work) {
  std::vector<double> times;
  QElapsedTimer timer;
  for (int i = 0; i < 501; ++i) {
    timer.start();
    work(i);
    times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  std::nth_element(times.begin(), times.begin() + 250, times.end());
  return times[250];
}

void once(const char* what, const QString& text, const TextStyle& style) {
  QElapsedTimer timer;
  timer.start();
  const TextImage image(TextLayout::make(text, style, pixelLimit));
  (void)image.bitmap();
  std::printf("%-44s %8.2f ms\n", what, static_cast<double>(timer.nsecsElapsed()) / 1e6);
}

void perFrame(const char* what, const std::function<QString(int)>& text, const TextStyle& style) {
  const double layout =
      medianMilliseconds([&](int i) { (void)TextLayout::make(text(i), style, pixelLimit); });
  const double both = medianMilliseconds([&](int i) {
    const TextImage image(TextLayout::make(text(i), style, pixelLimit));
    (void)image.bitmap();
  });
  std::printf("%-44s %8.3f ms set, %.3f ms set and drawn\n", what, layout, both);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QElapsedTimer timer;
  timer.start();
  const QGuiApplication app(argc, argv);
  std::printf("%-44s %8.2f ms\n", "application object",
              static_cast<double>(timer.nsecsElapsed()) / 1e6);
  once("first text of the process", QStringLiteral("Harbour Master"),
       styleOf("InterDisplay-Bold", 66));
  once("first text in a second font", QStringLiteral("Port authority, on site at the bridge"),
       styleOf("Inter-Medium", 36));
  once("first Arabic text", QStringLiteral("إعادة فتح جسر الميناء"),
       styleOf("NotoSansArabic-Bold", 60));
  once("first emoji", QStringLiteral("Live 🔴"), styleOf("Inter-Medium", 36));

  const auto clock = [](int i) {
    return QStringLiteral("12:%1:%2.%3")
        .arg(i / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(i % 60, 2, 10, QLatin1Char('0'))
        .arg(i % 50, 2, 10, QLatin1Char('0'));
  };
  perFrame("clock, 66 px, another string every frame", clock, styleOf("Inter-Bold", 66));
  const auto headline = [](int i) { return QStringLiteral("Harbour Master %1").arg(i); };
  perFrame("headline, 66 px, another string every frame", headline,
           styleOf("InterDisplay-Bold", 66));
  TextStyle block = styleOf("Inter-Regular", 30);
  block.width = 800;
  const auto paragraph = [](int i) {
    return QStringLiteral("%1 the harbour bridge reopens to traffic tonight ").arg(i).repeated(12);
  };
  perFrame("600 characters wrapped at 800 px, 30 px", paragraph, block);
  const TextStyle still = styleOf("Inter-Bold", 66);
  std::printf("%-44s %8.4f ms\n", "the same text again, from the store",
              medianMilliseconds([&](int) {
                (void)runtime::sharedTextImage(QStringLiteral("still"), still, pixelLimit);
              }));
  return 0;
}
