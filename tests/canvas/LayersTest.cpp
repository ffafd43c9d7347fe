#include <QPainter>

#include "CanvasFixture.h"
#include "canvas/ChessBoard.h"
#include "canvas/RulerPainter.h"
#include "support/GoldenImage.h"

namespace canvas {

using model::QuartzComponent;

namespace {

QImage blank(const QSize& size) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor(60, 70, 80));
  return image;
}

}  // namespace

TEST(ChessBoard, RowsFollowFromTheWidthAndColumnsFromTheMiddle) {
  const QImage pattern = ChessBoard(256, 120).image();
  ASSERT_EQ(pattern.size(), QSize(256, 120));
  const QColor first(0xC9, 0xC9, 0xC9);
  const QColor second(0xB9, 0xB9, 0xB9);
  // Four rows of 30; the column at the middle begins below with the second colour, and the one
  // that ends there runs the other way.
  EXPECT_EQ(pattern.pixelColor(129, 119), second);
  EXPECT_EQ(pattern.pixelColor(129, 89), first);
  EXPECT_EQ(pattern.pixelColor(126, 119), first);
  EXPECT_EQ(pattern.pixelColor(126, 89), second);
  EXPECT_EQ(pattern.pixelColor(159, 119), first);
  EXPECT_EQ(pattern.pixelColor(97, 119), second);
  // Too narrow for a row: one colour.
  const QImage narrow = ChessBoard(63, 120).image();
  EXPECT_EQ(narrow.pixelColor(40, 60), first);
  EXPECT_EQ(narrow.pixelColor(5, 119), first);
  EXPECT_TRUE(ChessBoard(0, 0).image().isNull());
}

TEST(RulerPainter, TicksStandAtTheirReadings) {
  RulerPainter ruler;
  ruler.unit = RulerUnit::forZoomMode(100, 1);
  ruler.origin = 30;
  ruler.extent = RulerPainter::Extent{40, 90};
  QImage image = blank({300, 18});
  QPainter painter(&image);
  ruler.paint(painter, 300);
  painter.end();
  const QColor tick(0x6B, 0x6E, 0x7A);
  const QColor ground(0x1F, 0x20, 0x24);
  EXPECT_EQ(image.pixelColor(130, 7), tick);   // 100, with its number
  EXPECT_EQ(image.pixelColor(180, 13), tick);  // 150
  EXPECT_EQ(image.pixelColor(180, 10), ground);
  EXPECT_EQ(image.pixelColor(190, 15), tick);
  EXPECT_EQ(image.pixelColor(190, 13), ground);
  EXPECT_EQ(image.pixelColor(75, 16), QColor(0x8C, 0x95, 0xFF));
  EXPECT_EQ(image.pixelColor(125, 16), ground);
}

class Layers : public CanvasFixture {
 protected:
  /// The scene in a small view.
  QImage painted(CanvasScene& scene, double ratio = 1) {
    const CanvasGeometry geometry(graphic->size(), {320, 200}, 0.15F);
    (void)scene.display(geometry, {0, 0, 320, 200}, ratio);
    QImage image = blank(QSize(320, 200) * ratio);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    scene.paint(painter);
    return image;
  }
  QuartzComponent* addRectangle(const QRectF& frame, const foundation::Color& color) {
    const auto path = model::StandardComponents::located().pathOf(QStringLiteral("Rectangle"));
    QStringList warnings;
    auto* component = graphic->addComponenWithQuartzCompositionFile(*path, {}, warnings);
    component->setOriginX(frame.x());
    component->setOriginY(frame.y());
    component->setWidth(frame.width());
    component->setHeight(frame.height());
    component->attributeForKey(QStringLiteral("Color"))->setCurrentValue(color);
    graphic->clearSelection();
    return component;
  }
};

TEST_F(Layers, StandOverOneAnother) {
  graphic->setShowsSafeZones(true);
  graphic->addRulerAtPosition(800, true);
  graphic->addRulerAtPosition(300, false);
  QuartzComponent* upright = addRectangle({200, 200, 700, 240}, {0.1, 0.3, 0.8, 1});
  QuartzComponent* turned = addRectangle({1100, 600, 400, 200}, {1, 0.7, 0.2, 1});
  turned->setZRotation(30);
  addRectangle({1700, 100, 400, 300}, {0.8, 0.1, 0.2, 1});  // reaches out of the picture
  upright->setSelected(true);
  turned->setSelected(true);
  CanvasScene scene(*graphic);
  scene.rubberBandLayer().setCurrentRect({150.4, 20.2, 100, 60});
  support::expectGolden(painted(scene), QStringLiteral("canvas-layers"));
  support::expectGolden(painted(scene, 2), QStringLiteral("canvas-layers-2x"));
}

TEST_F(Layers, BackgroundsMarksAndTargets) {
  QImage background(2, 1, QImage::Format_RGB32);
  background.setPixelColor(0, 0, QColor(20, 120, 60));
  background.setPixelColor(1, 0, QColor(20, 60, 120));
  graphic->setBackgroundMode(model::BackgroundMode::Image);
  graphic->setBackgroundImage(background);
  QuartzComponent* broken = addRectangle({300, 300, 380, 300}, {1, 1, 1, 1});
  broken->setZRotation(-20);
  broken->setStoredValue(QByteArray(), QStringLiteral("quartzCompositionData"));
  CanvasScene scene(*graphic);
  scene.transient().isDropTarget = true;
  scene.transient().snap.horizontal = 900;
  support::expectGolden(painted(scene), QStringLiteral("canvas-marks"));
}

}  // namespace canvas
