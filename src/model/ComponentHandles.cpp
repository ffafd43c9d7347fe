#include "model/ComponentHandles.h"

#include <cmath>
#include <numbers>

namespace model {

ComponentHandles::ComponentHandles(const QRectF& frame, double marginX, double marginY) {
  const QRectF outer = frame.adjusted(-marginX, -marginY, marginX, marginY);
  const double left = outer.left();
  const double middleX = outer.center().x() - size / 2;
  const double right = outer.right() - size;
  const double low = outer.top();
  const double middleY = outer.center().y() - size / 2;
  const double high = outer.bottom() - size;
  const auto grip = [](double x, double y) { return QRectF(x, y, size, size); };
  m_rects = {outer,
             grip(left, low),
             grip(left, middleY),
             grip(left, high),
             grip(middleX, high),
             grip(middleX, low),
             grip(right, low),
             grip(right, middleY),
             grip(right, high)};
}

int ComponentHandles::indexForLocation(const QPointF& location, double degrees) const {
  QPointF point = location;
  if (degrees != 0) {
    const double angle = degrees / -180 * std::numbers::pi;
    const QPointF centre = m_rects[0].center();
    const QPointF offset = location - centre;
    point = {offset.x() * std::cos(angle) - offset.y() * std::sin(angle) + centre.x(),
             offset.y() * std::cos(angle) + offset.x() * std::sin(angle) + centre.y()};
  }
  if (!m_rects[0].contains(point)) return noHit;
  for (int handle = 1; handle <= 8; ++handle)
    if (m_rects[static_cast<size_t>(handle)].contains(point)) return handle;
  return body;
}

bool ComponentHandles::movesTop(int handle) {
  return handle == 3 || handle == 4 || handle == 8;
}
bool ComponentHandles::movesBottom(int handle) {
  return handle == 1 || handle == 5 || handle == 6;
}
bool ComponentHandles::movesLeft(int handle) {
  return handle >= 1 && handle <= 3;
}
bool ComponentHandles::movesRight(int handle) {
  return handle >= 6 && handle <= 8;
}

}  // namespace model
