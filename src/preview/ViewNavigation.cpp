#include "preview/ViewNavigation.h"

#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QWheelEvent>

#include "preview/PreviewView.h"

namespace preview {

using widgets::ZoomSteps;

namespace {
constexpr double wheelStep = 120;   // eighths of a degree
constexpr double unitsOfStep = 60;  // that a step of the wheel moves the picture
}  // namespace

ViewNavigation::ViewNavigation(PreviewView& view) : QObject(&view), m_view(view) {
  view.installEventFilter(this);
  connect(&view, &PreviewView::scaleChanged, this, &ViewNavigation::showCursor);
}

bool ViewNavigation::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      return press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
      return drag(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
      return release();
    case QEvent::Wheel:
      return turnWheel(*static_cast<QWheelEvent*>(event));
    case QEvent::NativeGesture: {
      const auto& gesture = *static_cast<QNativeGestureEvent*>(event);
      if (gesture.gestureType() != Qt::ZoomNativeGesture) return false;
      m_view.setZoom(ZoomSteps::nearest(m_view.geometry().factor() * (1 + gesture.value())),
                     gesture.position());
      return true;
    }
    default:
      return false;
  }
}

bool ViewNavigation::press(const QMouseEvent& event) {
  const bool begins = event.button() == Qt::LeftButton || event.button() == Qt::MiddleButton;
  if (!begins || !m_view.geometry().isLargerThanView()) return false;
  m_isDragging = true;
  m_last = event.position();
  showCursor();
  return true;
}

bool ViewNavigation::drag(const QMouseEvent& event) {
  if (!m_isDragging) return false;
  m_view.moveBy(event.position() - std::exchange(m_last, event.position()));
  return true;
}

bool ViewNavigation::release() {
  if (!std::exchange(m_isDragging, false)) return false;
  showCursor();
  return true;
}

bool ViewNavigation::turnWheel(const QWheelEvent& event) {
  if (event.modifiers() & Qt::ControlModifier) {
    m_wheelTurn += event.angleDelta().y();
    const int steps = static_cast<int>(m_wheelTurn / wheelStep);
    m_wheelTurn -= steps * wheelStep;
    zoomStep(steps, event.position());
    return true;
  }
  if (!m_view.geometry().isLargerThanView()) return false;
  const bool isSmooth = !event.pixelDelta().isNull();
  m_view.moveBy(isSmooth ? QPointF(event.pixelDelta())
                         : QPointF(event.angleDelta()) / wheelStep * unitsOfStep);
  return true;
}

void ViewNavigation::zoomStep(int steps, const QPointF& about) {
  const auto factor = [this] { return m_view.geometry().factor(); };
  for (; steps > 0; --steps) m_view.setZoom(ZoomSteps::above(factor()), about);
  for (; steps < 0; ++steps) m_view.setZoom(ZoomSteps::below(factor()), about);
}

void ViewNavigation::showCursor() {
  if (!m_view.geometry().isLargerThanView())
    m_view.unsetCursor();
  else
    m_view.setCursor(m_isDragging ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
}

}  // namespace preview
