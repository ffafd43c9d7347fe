#include <gtest/gtest.h>

#include <thread>

#include "runtime/text/TextImage.h"

namespace {

TEST(TextImage, LooksTheSameFromWhateverThreadsDrawIt) {
  // The outlines of glyphs are shared by all texts, so all threads meet at the first drawing.
  int different = 0;
  for (int round = 0; round < 60; ++round) {
    runtime::TextStyle style;
    style.fontName = QStringLiteral("Inter-Bold");
    style.size = 40 + round;
    const auto text = runtime::sharedTextImage(QStringLiteral("Button Bridge"), style, 1'000'000);
    QImage pictures[4];
    std::vector<std::thread> threads;
    for (QImage& picture : pictures)
      threads.emplace_back([&picture, &text] { picture = text->pixels(text->extent()); });
    for (std::thread& thread : threads) thread.join();
    for (const QImage& picture : pictures) different += picture == pictures[0] ? 0 : 1;
  }
  EXPECT_EQ(different, 0);
}

}  // namespace
