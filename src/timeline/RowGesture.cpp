#include "timeline/RowGesture.h"

#include "model/Composition.h"
#include "timeline/DragDistance.h"
#include "timeline/RowSelecting.h"

namespace timeline {

SelectionMemory::SelectionMemory(model::Composition& composition)
    : m_composition(composition),
      m_components(composition.selectedComponents()),
      m_keyFrames(KeyFrameSelection(composition).keyFrames()) {}

void SelectionMemory::restore() const {
  m_composition.clearSelection();
  for (model::QuartzComponent* component : m_components)
    if (component->context()) component->setSelected(true);
  KeyFrameSelection(m_composition).set(m_keyFrames);
}

RowGesture::RowGesture(TimelineStage& stage, TimelineHit hit, const TimelinePointer& start)
    : m_stage(stage),
      m_hit(std::move(hit)),
      m_start(start),
      m_memory(stage.composition()),
      m_distanceBefore(stage.distance().deltaX()),
      m_lastX(start.rows.x()) {
  stage.beginTooltip();
}

bool RowGesture::dragCheckFirstEvent(Qt::KeyboardModifiers modifiers) {
  if (!m_draggingFirstEvent) return false;
  m_draggingFirstEvent = false;
  RowSelecting& selecting = m_stage.selecting();
  if (m_hit.kind == TimelineHit::Kind::Component)
    selecting.selectComponent(m_stage.composition(), m_stage.rows(), *m_hit.row.component,
                              modifiers);
  else if (m_hit.kind == TimelineHit::Kind::KeyFrame)
    selecting.selectKeyFrame(m_stage.composition(), m_stage.rows(), m_hit.keyFrame, modifiers);
  else
    RowSelecting::clear(m_stage.composition());
  return true;
}

double RowGesture::takeMovement(const TimelinePointer& pointer) {
  const double movement = pointer.rows.x() - m_lastX;
  m_lastX = pointer.rows.x();
  return movement;
}

void RowGesture::update(const TimelinePointer& pointer) {
  if (!m_isDragging && (pointer.rows - m_start.rows).manhattanLength() < RowGesture::deadZone)
    return;
  m_isDragging = true;
  dragCheckFirstEvent(m_start.modifiers);
  drag(pointer);
}

void RowGesture::finish(const TimelinePointer& pointer) {
  if (m_isDragging) update(pointer);
  finishDrag();
  m_stage.showMarks({});
  m_stage.finishTooltip();
  dragCheckFirstEvent(m_start.modifiers);
}

void RowGesture::cancel() {
  cancelDrag();
  m_stage.distance().setDeltaX(m_distanceBefore);
  m_memory.restore();
  m_stage.showMarks({});
  m_stage.finishTooltip();
}

}  // namespace timeline
