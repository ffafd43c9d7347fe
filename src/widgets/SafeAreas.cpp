#include "widgets/SafeAreas.h"

#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace widgets {

QRectF SafeAreas::niceDrawingRectFromRect(const QRectF& rect, double devicePixelRatio) {
  const QTransform toDevice = QTransform::fromScale(devicePixelRatio, devicePixelRatio);
  const QRectF whole(toDevice.mapRect(rect).toAlignedRect());
  return toDevice.inverted().mapRect(whole.translated(0.5, 0.5));
}

QRectF SafeAreas::share(float left, float top, float width, float height) const {
  return {m_picture.left() + left * m_picture.width(), m_picture.top() + top * m_picture.height(),
          width * m_picture.width(), height * m_picture.height()};
}

QRectF SafeAreas::outer() const {
  return share(0.0175F, 0.0175F, 0.965F, 0.965F);
}

QRectF SafeAreas::inner() const {
  return share(0.05F, 0.025F, 0.9F, 0.95F);
}

void SafeAreas::paint(QPainter& painter) const {
  stroke(painter, outer(), TYStyleKit::colour(Token::Guide));
  stroke(painter, inner(), TYStyleKit::colour(Token::SafeInner));
}

void SafeAreas::stroke(QPainter& painter, const QRectF& area, const QColor& color) {
  const DevicePixels pixels(painter);
  const double half = pixels.hairline() / 2;
  const QRectF middle = niceDrawingRectFromRect(area, 1 / pixels.hairline());
  pixels.edge(middle.adjusted(-half, -half, half, half), color);
}

}  // namespace widgets
