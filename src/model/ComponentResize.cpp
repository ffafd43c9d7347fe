#include "model/ComponentResize.h"

#include <cmath>

#include "model/ComponentHandles.h"
#include "model/QuartzComponent.h"

namespace model {

namespace {
constexpr double smallestSide = 2;  // pixels
}

ComponentResize::ComponentResize(int handle, const QRectF& startFrame, const QPointF& pointer,
                                 Proportional proportional, FromCenter fromCenter)
    : m_handle(handle),
      m_start(startFrame),
      m_pointer(pointer),
      m_fromCenter(fromCenter == FromCenter::Yes) {
  if (ComponentHandles::movesTop(handle)) m_growthY = pointer.y() - startFrame.bottom();
  if (ComponentHandles::movesBottom(handle)) m_growthY = startFrame.top() - pointer.y();
  if (ComponentHandles::movesRight(handle)) m_growthX = pointer.x() - startFrame.right();
  if (ComponentHandles::movesLeft(handle)) m_growthX = startFrame.left() - pointer.x();
  if (proportional == Proportional::Yes) keepProportions();
}

void ComponentResize::keepProportions() {
  // The same ratio both ways: a wide frame grows higher than it should by a horizontal drag.
  const double ratio = m_start.width() / m_start.height();
  if (!std::isfinite(ratio)) return;  // a frame without height has no proportions
  if (m_growthY > m_growthX) {
    const double before = std::exchange(m_growthX, ratio * m_growthY);
    if (!ComponentHandles::movesRight(m_handle)) m_pointer.rx() += before - m_growthX;
  } else {
    const double before = std::exchange(m_growthY, ratio * m_growthX);
    if (!ComponentHandles::movesTop(m_handle)) m_pointer.ry() += before - m_growthY;
  }
  const bool isEdgeMiddle = m_handle == 2 || m_handle == 4 || m_handle == 5 || m_handle == 7;
  m_fromCenter = m_fromCenter || isEdgeMiddle;
}

void ComponentResize::applyTo(QuartzComponent& component) const {
  if (m_growthX != 0 && !applyWidth(component)) return;
  if (m_growthY != 0 && !applyHeight(component)) return;
  if (component.width() < 1) component.setWidth(1);
  if (component.height() < 1) component.setHeight(1);
}

bool ComponentResize::applyWidth(QuartzComponent& component) const {
  double width = m_start.width() + m_growthX;
  if (width < smallestSide) return false;
  if (!ComponentHandles::movesRight(m_handle)) component.setOriginX(m_pointer.x());
  if (m_fromCenter) {
    component.setOriginX(m_start.left() - m_growthX);
    width = m_start.width() + 2 * m_growthX;
  }
  component.setWidth(width);
  return true;
}

bool ComponentResize::applyHeight(QuartzComponent& component) const {
  double height = m_start.height() + m_growthY;
  if (height < smallestSide) return false;
  if (!ComponentHandles::movesTop(m_handle)) component.setOriginY(m_pointer.y());
  if (m_fromCenter) {
    component.setOriginY(m_start.top() - m_growthY);
    height = m_start.height() + 2 * m_growthY;
  }
  component.setHeight(height);
  return true;
}

}  // namespace model
