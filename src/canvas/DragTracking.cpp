#include "canvas/DragTracking.h"

#include <cmath>

namespace canvas {

bool DeadZone::hasLeft(const QPointF& offset) {
  m_left = m_left || std::abs(offset.x()) >= size || std::abs(offset.y()) >= size;
  return m_left;
}

QPointF AxisLock::constrained(const QPointF& offset, bool isOn) {
  if (!isOn) return offset;
  if (!m_axis) m_axis = std::abs(offset.x()) < std::abs(offset.y()) ? Qt::Vertical : Qt::Horizontal;
  return *m_axis == Qt::Vertical ? QPointF(0, offset.y()) : QPointF(offset.x(), 0);
}

}  // namespace canvas
