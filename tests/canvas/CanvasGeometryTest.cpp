#include <gtest/gtest.h>

#include "canvas/CanvasGeometry.h"
#include "canvas/PictureTarget.h"
#include "canvas/RulerScale.h"

namespace canvas {

namespace {

const QSizeF hd(1920, 1080);
const QSizeF rulers(18, 18);

}  // namespace

TEST(CanvasGeometry, ZoomModesArePercentAndZeroFits) {
  EXPECT_EQ(CanvasGeometry::zoomFactor(150, {100, 100}, hd, rulers), 1.5F);
  EXPECT_EQ(CanvasGeometry::zoomFactor(75, {100, 100}, hd, rulers), 0.75F);
  // 26 points are left free on every side, and the tighter axis decides.
  EXPECT_FLOAT_EQ(CanvasGeometry::zoomFactor(0, {1012, 2000}, hd, rulers), 0.5F);
  EXPECT_FLOAT_EQ(CanvasGeometry::zoomFactor(0, {4000, 592}, hd, rulers), 0.5F);
  // No room gives what the arithmetic gives.
  EXPECT_EQ(CanvasGeometry::zoomFactor(0, {52, 1000}, hd, rulers), 0.0F);
  EXPECT_LT(CanvasGeometry::zoomFactor(0, {20, 1000}, hd, rulers), 0.0F);
  EXPECT_FALSE(CanvasGeometry(hd, {20, 1000}, -0.01F).isValid());
  // Without a width the height decides.
  EXPECT_FLOAT_EQ(CanvasGeometry::zoomFactor(0, {52, 592}, {0, 1080}, rulers), 0.5F);
}

TEST(CanvasGeometry, AViewGrowsByAMarginWhereThePictureDoesNotFitInside) {
  EXPECT_EQ(CanvasGeometry::documentViewSize({1000, 800}, {999, 900}), QSizeF(1000, 950));
  EXPECT_EQ(CanvasGeometry::documentViewSize({1000, 800}, {1000, 799}), QSizeF(1050, 800));
}

TEST(CanvasGeometry, PointsOfThePictureTheLayerAndTheView) {
  const CanvasGeometry geometry(hd, {1160, 740}, 0.5F);
  EXPECT_EQ(geometry.pictureFrame(), QRectF(100, 100, 960, 540));
  EXPECT_EQ(geometry.viewPoint({0, 0}), QPointF(100, 640));
  EXPECT_EQ(geometry.viewPoint({1920, 1080}), QPointF(1060, 100));
  EXPECT_EQ(geometry.picturePoint({580, 370}), QPointF(960, 540));
  EXPECT_EQ(geometry.viewRect({200, 100, 400, 200}), QRectF(200, 490, 200, 100));
  EXPECT_EQ(geometry.pictureRect({200, 490, 200, 100}), QRectF(200, 100, 400, 200));

  EXPECT_EQ(geometry.drawingAreaOffset(), QPointF(-380, -170));
  EXPECT_EQ(geometry.relativePointToAbsolutePointWithoutZoom({380, 200}), QPointF(0, 30));
  EXPECT_EQ(geometry.relativePointToAbsolutePoint({0, 0}), QPointF(100, 100));
  EXPECT_EQ(geometry.absolutePointToRelativePoint({1060, 640}), QPointF(1920, 1080));
  EXPECT_EQ(geometry.relativeFrameToAbsoluteZoomLevelFrame({200, 100, 400, 200}),
            QRectF(200, 150, 200, 100));
  // The middle of the layer stays where it is.
  EXPECT_EQ(geometry.zoomTransformation().map(QPointF(580, 370)), QPointF(580, 370));
}

TEST(CanvasGeometry, DevicePixelsOfAPartOfTheView) {
  const CanvasGeometry geometry(hd, {1160, 740}, 0.5F);
  const auto whole = PictureTarget::of(geometry, {0, 0, 1160, 740}, 2);
  EXPECT_EQ(whole.pixels, QSize(2320, 1480));
  EXPECT_EQ(whole.picture, QRect(200, 200, 1920, 1080));
  const auto part = PictureTarget::of(geometry, {300, 150, 200, 100}, 1);
  EXPECT_EQ(part.pixels, QSize(200, 100));
  EXPECT_EQ(part.picture, QRect(-200, -50, 960, 540));
}

TEST(RulerScale, UnitsFollowTheZoomMode) {
  EXPECT_EQ(RulerUnit::forZoomMode(0, 0.3).name, QStringLiteral("PointsFit"));
  EXPECT_EQ(RulerUnit::forZoomMode(50, 0.5).name, QStringLiteral("Points50"));
  EXPECT_EQ(RulerUnit::forZoomMode(100, 1).name, QStringLiteral("Points"));
  EXPECT_EQ(RulerUnit::forZoomMode(150, 1.5).name, QStringLiteral("Points150"));
  EXPECT_EQ(RulerUnit::forZoomMode(200, 2).name, QStringLiteral("Points200"));
  EXPECT_EQ(RulerUnit::forZoomMode(75, 0.75).name, QStringLiteral("Points"));
}

TEST(RulerScale, NumbersNeitherCrowdNorThinOut) {
  for (const double factor : {0.1, 0.25, 0.34, 0.55, 1.0, 1.5, 2.0, 4.0, 8.0}) {
    const RulerUnit unit{{}, {}, factor};
    const double distance = RulerScale::forUnit(unit).label * factor;
    EXPECT_GE(distance, 80) << factor;
    EXPECT_LE(distance, 200) << factor;
  }
  EXPECT_EQ(RulerScale::forUnit({{}, {}, 0.55}), (RulerScale{200, 20}));
  EXPECT_EQ(RulerScale::forUnit({{}, {}, 0.34}), (RulerScale{400, 40}));
}

}  // namespace canvas
