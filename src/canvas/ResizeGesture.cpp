#include "canvas/ResizeGesture.h"

#include "canvas/CanvasCursors.h"
#include "model/Composition.h"

namespace canvas {

using model::ComponentResize;

ResizeGesture::ResizeGesture(CanvasStage& stage, model::QuartzComponent& component, int handle,
                             const Pointer& start)
    : m_stage(stage),
      m_component(component),
      m_handle(handle),
      m_startFrame(component.drawingFrame()),
      m_start(start.picture) {
  stage.showCursor(cursorForHandle(handle));
}

void ResizeGesture::update(const Pointer& pointer) {
  if (!m_component.context()) return;  // deleted meanwhile
  if (!m_step.isOpen() && pointer.picture == m_start) return;
  m_step.open(*m_stage.composition().context(), tr("Resize %1").arg(m_component.title()));
  m_stage.autoscroll(pointer.view);
  const Snap snap = pointer.holds(Qt::ControlModifier)
                        ? Snap()
                        : Snapping::ofComposition(m_stage.composition()).snapPoint(pointer.picture);
  m_stage.showSnap(snap);
  const bool proportional = m_component.constrainProportions() != pointer.holds(Qt::ShiftModifier);
  if (!proportional && !m_component.constrainProportions())
    restoreUnmovedAxes(pointer.picture + snap.correction);
  m_handle = m_component.resizeByMovingHandle(
      m_handle, pointer.picture + snap.correction,
      proportional ? ComponentResize::Proportional::Yes : ComponentResize::Proportional::No,
      pointer.holds(Qt::AltModifier) ? ComponentResize::FromCenter::Yes
                                     : ComponentResize::FromCenter::No,
      m_startFrame);
}

void ResizeGesture::restoreUnmovedAxes(const QPointF& point) {
  using model::ComponentHandles;
  const bool right = ComponentHandles::movesRight(m_handle);
  const bool top = ComponentHandles::movesTop(m_handle);
  if ((right || ComponentHandles::movesLeft(m_handle)) &&
      point.x() == (right ? m_startFrame.right() : m_startFrame.left())) {
    m_component.setOriginX(m_startFrame.left());
    m_component.setWidth(m_startFrame.width());
  }
  if ((top || ComponentHandles::movesBottom(m_handle)) &&
      point.y() == (top ? m_startFrame.bottom() : m_startFrame.top())) {
    m_component.setOriginY(m_startFrame.top());
    m_component.setHeight(m_startFrame.height());
  }
}

void ResizeGesture::finish(const Pointer& pointer) {
  update(pointer);
  m_step.finish();
  m_stage.showSnap({});
}

void ResizeGesture::cancel() {
  m_step.cancel();
  m_stage.showSnap({});
}

}  // namespace canvas
