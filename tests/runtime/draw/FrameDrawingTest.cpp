#include <gtest/gtest.h>

#include <QThreadPool>

#include "runtime/draw/FrameCanvas.h"
#include "support/DrawTools.h"
#include "support/GoldenImage.h"

namespace {

using namespace drawing;
using namespace runtime;

constexpr QSize size(200, 120);

/// Sprites that wander and turn, so that every frame leaves something else behind.
DrawList frame(int number, std::vector<DrawItem> start = {}) {
  std::vector<DrawItem> items = std::move(start);
  for (int i = 0; i < 6; ++i) {
    QuadItem quad = textured(QRectF(10.3 * i + number * 2.7, (i * 37 + number * 11) % 100, 41, 23),
                             size, noise(20, 10, static_cast<quint32>(i)));
    quad.matrix.rotate(static_cast<float>(number * 13 * i), 0, static_cast<float>(i % 2), 1);
    items.emplace_back(quad);
  }
  return listOf(std::move(items));
}

/// As a task of the pool draws it. Elsewhere the toolkit samples turned images in shorter pieces,
/// whose rounding may differ in the last bit.
QImage drawnInPool(const DrawList& list) {
  QImage target = canvas(200, 120);
  FrameDrawer().draw(list, target);
  return target;
}

TEST(FrameDrawing, BandsGiveTheSameBytes) {
  for (int number = 0; number < 5; ++number) {
    const QImage expected = drawnInPool(frame(number));
    for (const int bands : {1, 2, 3, 16, 500}) {
      QImage target = canvas(200, 120);
      FrameDrawer(bands).draw(frame(number), target);
      EXPECT_EQ(target, expected) << bands;
    }
  }
}

TEST(FrameDrawing, TasksOfABusyPoolMayDrawInBands) {
  QThreadPool* pool = QThreadPool::globalInstance();
  const QImage expected = drawnInPool(frame(3));
  std::atomic<int> right = 0;
  for (int i = 0; i < 8; ++i)
    pool->start([&] {
      QImage target = canvas(200, 120);
      FrameDrawer(4).draw(frame(3), target);
      right += target == expected;
    });
  pool->waitForDone();
  EXPECT_EQ(right, 8);
}

TEST(FrameDrawing, NothingOfTheFrameBeforeStays) {
  GradientItem gradient;
  gradient.colors = {{1, 0, 0, 1}, {0, 0, 1, 0.3}};
  for (const int bands : {0, 1, 3}) {
    FrameCanvas reused(size, bands);
    for (int number = 0; number < 12; ++number) {
      std::vector<DrawItem> start;
      if (number % 4 == 1) start = {ClearItem{}};
      if (number % 4 == 2) start = {ClearItem{{0, 1, 0, 0.5}}};
      if (number % 4 == 3) start = {gradient};
      const DrawList list = frame(number, std::move(start));
      EXPECT_LE(support::largestDifference(reused.draw(list), drawnInPool(list)),
                bands == 0 ? 2 : 0)
          << bands << ' ' << number;
    }
    EXPECT_EQ(reused.draw({}), canvas(200, 120));
  }
}

TEST(FrameDrawing, BandsShareTheWork) {
  const DrawList list = listOf({plain(QRectF(0, 100, 200, 20), size, Color::white())});
  const std::vector<int> limits = FrameDrawer::bandLimits(list, size, 2);
  ASSERT_EQ(limits.size(), 3U);
  EXPECT_GT(limits[1], 100);
  EXPECT_LT(limits[1], 115);
}

}  // namespace
