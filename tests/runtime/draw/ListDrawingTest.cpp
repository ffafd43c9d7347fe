#include <gtest/gtest.h>

#include <cmath>

#include "runtime/draw/DrawnImage.h"
#include "runtime/draw/Gradient.h"
#include "support/DrawTools.h"
#include "support/GoldenImage.h"

namespace {

using namespace drawing;
using namespace runtime;

constexpr QSize size(64, 36);

GradientItem gradientOf(std::vector<Color> colors, GradientItem::Direction direction) {
  GradientItem item;
  item.colors = std::move(colors);
  item.direction = direction;
  return item;
}

TEST(ListDrawing, ClearWritesPremultiplied) {
  const DrawList list = listOf({ClearItem{{1, 0.5, 0, 0.5}}});
  EXPECT_EQ(drawn(list, canvas(8, 8, Qt::white)).pixel(3, 3), qRgba(128, 64, 0, 128));
  const DrawList depthOnly = listOf({ClearItem{{1, 0, 0, 1}, false, true}});
  EXPECT_EQ(drawn(depthOnly, canvas(8, 8, Qt::white)), canvas(8, 8, Qt::white));
}

TEST(ListDrawing, GradientRunsFromEdgeToEdge) {
  using D = GradientItem::Direction;
  const std::vector<Color> colors{Color::black(), Color::white()};
  for (const D direction : {D::Up, D::Right, D::Down, D::Left}) {
    const QImage image = drawn(listOf({gradientOf(colors, direction)}), canvas(256, 256));
    for (int i = 0; i < 256; ++i) {
      // The pixel's centre lies half a step from the edge.
      const bool backwards = direction == D::Up || direction == D::Left;
      const double place = ((backwards ? 255 - i : i) + 0.5) / 256;
      const bool across = direction == D::Right || direction == D::Left;
      const QRgb pixel = across ? image.pixel(i, 100) : image.pixel(100, i);
      EXPECT_NEAR(qRed(pixel), place * 255, 0.51) << static_cast<int>(direction) << ' ' << i;
    }
  }
}

TEST(ListDrawing, GradientOfThreeColoursBendsInItsMiddle) {
  GradientItem item =
      gradientOf({Color::black(), {1, 0, 0, 1}, {1, 0, 0, 0}}, GradientItem::Direction::Right);
  item.middle = 0.25;
  const QImage image = drawn(listOf({item}), canvas(100, 4));
  EXPECT_NEAR(qRed(image.pixel(12, 1)), 127.5, 1);
  EXPECT_NEAR(qRed(image.pixel(25, 1)), 253, 2);
  EXPECT_NEAR(qAlpha(image.pixel(62, 1)), 127.5, 1);
  for (const double middle : {0.0, 1.0, -3.0, 9.0, std::nan("")}) {
    item.middle = middle;
    EXPECT_NE(drawn(listOf({item}), canvas(100, 4)).pixel(50, 1), 0U) << middle;
  }
  item.blending = Blending::Over;
  const QImage over = drawn(listOf({item}), canvas(100, 4, Qt::white));
  EXPECT_EQ(qAlpha(over.pixel(62, 1)), 255);
}

TEST(ListDrawing, LinesHaveTheirWidthInPixels) {
  LineItem line;
  line.start = QVector3D(-0.5F, 0, 0);
  line.end = QVector3D(0.5F, 0, 0);
  line.startColor = {1, 0, 0, 1};
  line.endColor = {0, 0, 1, 1};
  line.width = 4;
  const QImage image = drawn(listOf({line}), canvas(64, 36));
  EXPECT_EQ(qAlpha(image.pixel(32, 15)), 0);
  for (int y = 16; y < 20; ++y) EXPECT_EQ(qAlpha(image.pixel(32, y)), 255) << y;
  EXPECT_EQ(qAlpha(image.pixel(32, 20)), 0);
  EXPECT_EQ(qAlpha(image.pixel(15, 18)), 0);
  EXPECT_NEAR(qRed(image.pixel(16, 18)), 251, 2);
  EXPECT_NEAR(qRed(image.pixel(31, 18)), 129, 3);
  // From far in front to behind the eye: cut, not turned inside out.
  line.start = QVector3D(0, -0.2F, 0);
  line.end = QVector3D(0, -5, 30);
  const QImage cut = drawn(listOf({line}), canvas(64, 36));
  EXPECT_EQ(qAlpha(cut.pixel(32, 34)), 255);
  EXPECT_EQ(qAlpha(cut.pixel(32, 12)), 0);
  for (const float width : {0.0F, -1.0F, std::nanf("")}) {
    line.width = width;
    EXPECT_EQ(drawn(listOf({line}), canvas(64, 36)), canvas(64, 36));
  }
}

TEST(ListDrawing, PartsMakeTheWhole) {
  constexpr QSize wide(160, 90);
  const QImage image = noise(50, 30);
  QuadItem turned = textured(QRectF(40, 20, 70, 50), wide, image);
  turned.matrix.rotate(33, 0, 0, 1);
  QuadItem tilted = textured(QRectF(70, 10, 60, 60), wide, image);
  tilted.matrix.rotate(50, 0, 1, 0);
  tilted.state.blending = Blending::Add;
  LineItem line;
  line.start = QVector3D(-0.9F, -0.5F, 0);
  line.end = QVector3D(0.9F, 0.4F, 0.3F);
  line.startColor = line.endColor = Color::white();
  DrawList list =
      listOf({gradientOf({Color::black(), {0, 0, 1, 1}}, GradientItem::Direction::Up),
              plain(QRectF(3.3, 4.7, 90, 60), wide, {1, 0, 0, 0.5}),
              textured(QRectF(20.5, 30.25, 50, 30), wide, image), turned, tilted, line});
  for (const DepthTesting depth : {DepthTesting::None, DepthTesting::ReadWrite}) {
    std::get<QuadItem>(list.items[3]).state.depth = depth;
    std::get<QuadItem>(list.items[4]).state.depth = depth;
    const QImage whole = drawn(list, canvas(160, 90));
    QImage parts = canvas(160, 90);
    RasterBackend backend;
    for (int y = 0; y < 90; y += 7) backend.drawArea(list, parts, QRect(0, y, 160, 7));
    EXPECT_EQ(whole, parts);
  }
}

QuadItem showing(const DrawList& list, const QRectF& place, const QSize& destination) {
  QuadItem quad = quadOver(place, destination);
  quad.image = Image(std::make_shared<DrawnImage>(list, place.size().toSize()));
  return quad;
}

TEST(ListDrawing, ReplayedImagesLookLikeImages) {
  constexpr QSize inner(48, 30);
  const QImage picture =
      noise(4, 3).scaled(30, 20, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QuadItem turned = textured(QRectF(12, 6, 24, 16), inner, picture);
  turned.matrix.rotate(20, 0, 0, 1);
  const DrawList content =
      listOf({gradientOf({{1, 0, 0, 0.5}, {0, 0, 1, 0.2}}, GradientItem::Direction::Right), turned,
              plain(QRectF(-5, 10.5, 30, 12), inner, {0, 1, 0, 0.6})});
  const DrawList single = listOf({plain(QRectF(3.5, 4, 30, 20), inner, {0, 1, 0, 0.6})});
  const DrawList cleared = listOf({ClearItem{{0, 0.5, 0.5, 0.5}}, turned});
  for (const auto& [list, opacity] :
       {std::pair{content, 1.0}, {content, 0.5}, {single, 1.0}, {single, 0.5}, {cleared, 1.0}}) {
    for (const QPoint& at : {QPoint(5, 4), QPoint(-11, 17), QPoint(30, -6)}) {
      QuadItem quad = showing(list, QRectF(at, inner), size);
      const auto* source = static_cast<const DrawnImage*>(quad.image.source());
      EXPECT_EQ(source->replay(opacity).has_value(), opacity == 1 || list.items.size() == 1);
      quad.color.alpha = opacity;
      QuadItem asImage = quad;
      asImage.image = Image::fromQImage(quad.image.bitmap());
      const QImage a = drawn(listOf({quad}), canvas(64, 36, QColor(40, 90, 200)));
      const QImage b = drawn(listOf({asImage}), canvas(64, 36, QColor(40, 90, 200)));
      EXPECT_LE(support::largestDifference(a, b), 2) << at.x() << ' ' << opacity;
    }
  }
}

TEST(ListDrawing, OnlyThingsLaidOverOneAnotherAreReplayed) {
  const QuadItem over = plain(QRectF(30, 16, 5, 5), size, Color::white());
  QuadItem replace = over;
  replace.state.blending = Blending::Replace;
  QuadItem masked = over;
  masked.state.colorMask = 7;
  QuadItem hidden = over;
  hidden.state.depth = DepthTesting::ReadWrite;
  QuadItem front = hidden;
  front.matrix.translate(0, 0, 0.5F);
  const auto replays = [](std::vector<DrawItem> items) {
    return DrawnImage(listOf(std::move(items)), size).canBeReplayed();
  };
  EXPECT_TRUE(replays({ClearItem{}, over, over}));
  EXPECT_TRUE(replays({hidden, front}));
  EXPECT_FALSE(replays({front, hidden}));
  EXPECT_FALSE(replays({replace}));
  EXPECT_FALSE(replays({masked}));
  EXPECT_FALSE(replays({over, ClearItem{}, over}));
  EXPECT_FALSE(DrawnImage(listOf({over}), size, canvas(64, 36)).canBeReplayed());
  std::vector<DrawItem> many(5, plain(QRectF(0, 0, 64, 36), size, {1, 1, 1, 0.1}));
  EXPECT_FALSE(replays(many));
}

}  // namespace
