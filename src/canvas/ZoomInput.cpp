#include "canvas/ZoomInput.h"

#include <QGestureEvent>
#include <QNativeGestureEvent>
#include <QWheelEvent>

#include "canvas/CompositionView.h"
#include "canvas/TYZoomScrollView.h"
#include "model/Composition.h"
#include "widgets/ZoomSteps.h"

namespace canvas {

namespace {
constexpr double wheelStep = 120;  // eighths of a degree
}

void ZoomInput::zoomTo(qint32 zoomMode, const QPointF& viewPoint) {
  if (!m_view.composition()) return;
  if (m_view.scrollView())
    m_view.scrollView()->zoomAround(viewPoint, zoomMode);
  else
    m_view.composition()->setZoomMode(zoomMode);
}

void ZoomInput::step(int steps, const QPointF& viewPoint) {
  for (; steps > 0; --steps) zoomTo(widgets::ZoomSteps::above(m_view.zoomFactor()), viewPoint);
  for (; steps < 0; ++steps) zoomTo(widgets::ZoomSteps::below(m_view.zoomFactor()), viewPoint);
}

void ZoomInput::turnWheel(const QWheelEvent& event) {
  m_wheelTurn += event.angleDelta().y();
  const int steps = static_cast<int>(m_wheelTurn / wheelStep);
  m_wheelTurn -= steps * wheelStep;
  step(steps, event.position());
}

void ZoomInput::pinch(const QNativeGestureEvent& event) {
  if (event.gestureType() == Qt::ZoomNativeGesture)
    zoomTo(widgets::ZoomSteps::nearest(m_view.zoomFactor() * (1 + event.value())),
           event.position());
}

bool ZoomInput::pinch(QGestureEvent& event) {
  const auto* gesture = static_cast<const QPinchGesture*>(event.gesture(Qt::PinchGesture));
  if (!gesture) return false;
  if (gesture->changeFlags().testFlag(QPinchGesture::ScaleFactorChanged))
    zoomTo(widgets::ZoomSteps::nearest(m_view.zoomFactor() * gesture->scaleFactor()),
           m_view.mapFromGlobal(gesture->centerPoint()));
  return true;
}

}  // namespace canvas
