#include "canvas/RubberBandGesture.h"

#include "model/Composition.h"
#include "store/ObjectContext.h"

namespace canvas {

using model::QuartzComponent;

RubberBandGesture::RubberBandGesture(CanvasStage& stage, const Pointer& start)
    : m_stage(stage), m_start(start.view), m_inverts(start.holds(Qt::ShiftModifier)) {
  m_stage.showRubberBand({});
}

QRectF RubberBandGesture::rectTo(const QPointF& viewPoint) const {
  return viewPoint == m_start ? QRectF() : QRectF(m_start, viewPoint).normalized();
}

void RubberBandGesture::update(const Pointer& pointer) {
  m_stage.showRubberBand(rectTo(pointer.view));
}

void RubberBandGesture::finish(const Pointer& pointer) {
  select(rectTo(pointer.view));
  m_stage.showRubberBand({});
}

void RubberBandGesture::cancel() {
  m_stage.showRubberBand({});
}

void RubberBandGesture::select(const QRectF& rect) {
  model::Composition& composition = m_stage.composition();
  const store::UndoSuspension suspension(*composition.context());
  if (!m_inverts) composition.clearSelection();
  if (rect.isEmpty()) return;
  const QRectF inPicture = m_stage.pictureRect(rect);
  for (QuartzComponent* component : composition.componentsSortedByZLevel())
    if (component->visible() && component->visibleInCompositionEditor() &&
        component->drawingFrame().intersects(inPicture))
      component->setSelected(!m_inverts || !component->selected());
}

}  // namespace canvas
