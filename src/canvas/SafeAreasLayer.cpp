#include "canvas/SafeAreasLayer.h"

#include <QPainter>
#include <cmath>

#include "model/Composition.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

using widgets::Token;
using widgets::TYStyleKit;

namespace {

QRectF share(const CanvasGeometry& geometry, float left, float top, float width, float height) {
  const QRectF frame = geometry.pictureFrame();
  return {frame.left() + left * frame.width(), frame.top() + top * frame.height(),
          width * frame.width(), height * frame.height()};
}

}  // namespace

QRectF SafeAreasLayer::niceDrawingRectFromRect(const QRectF& rect, double devicePixelRatio) {
  const QTransform toDevice = QTransform::fromScale(devicePixelRatio, devicePixelRatio);
  const QRectF whole(toDevice.mapRect(rect).toAlignedRect());
  return toDevice.inverted().mapRect(whole.translated(0.5, 0.5));
}

QRectF SafeAreasLayer::outerArea(const CanvasGeometry& geometry) {
  return share(geometry, 0.0175F, 0.0175F, 0.965F, 0.965F);
}

QRectF SafeAreasLayer::innerArea(const CanvasGeometry& geometry) {
  return share(geometry, 0.05F, 0.025F, 0.9F, 0.95F);
}

void SafeAreasLayer::paint(QPainter& painter, const CanvasGeometry& geometry) const {
  if (!geometry.isValid()) return;
  if (m_composition.showsSafeZones()) {
    strokeArea(painter, outerArea(geometry), TYStyleKit::colour(Token::Guide));
    strokeArea(painter, innerArea(geometry), TYStyleKit::colour(Token::SafeInner));
  }
  if (!m_composition.showsRulers()) return;
  const widgets::DevicePixels pixels(painter);
  const QColor color = TYStyleKit::colour(Token::Guide);
  for (const model::Ruler* ruler : m_composition.rulers()) {
    const QPointF at = geometry.viewPoint({ruler->position(), ruler->position()});
    if (ruler->horizontal())
      pixels.horizontal(0, geometry.view().width(), at.y(), color);
    else
      pixels.vertical(at.x(), 0, geometry.view().height(), color);
  }
}

void SafeAreasLayer::strokeArea(QPainter& painter, const QRectF& area, const QColor& color) {
  const widgets::DevicePixels pixels(painter);
  const double half = pixels.hairline() / 2;
  const QRectF middle = niceDrawingRectFromRect(area, 1 / pixels.hairline());
  pixels.edge(middle.adjusted(-half, -half, half, half), color);
}

}  // namespace canvas
