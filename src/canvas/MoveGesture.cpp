#include "canvas/MoveGesture.h"

#include "model/Composition.h"

namespace canvas {

using model::QuartzComponent;

MoveGesture::MoveGesture(CanvasStage& stage, const Pointer& start)
    : m_stage(stage), m_start(start.picture) {
  for (QuartzComponent* component : stage.composition().selectedComponents()) {
    const QRectF frame = component->drawingFrame();
    // Not QRectF::united(), which leaves out frames without a size.
    m_union = m_moved.isEmpty() ? frame
                                : QRectF(QPointF(std::min(m_union.left(), frame.left()),
                                                 std::min(m_union.top(), frame.top())),
                                         QPointF(std::max(m_union.right(), frame.right()),
                                                 std::max(m_union.bottom(), frame.bottom())));
    m_moved.append({component, frame});
  }
  stage.showCursor(Qt::ClosedHandCursor);
}

QString MoveGesture::stepName(const QList<QuartzComponent*>& components) {
  return components.size() == 1
             ? tr("Move %1").arg(components.first()->title())
             : tr("Move %n Components", nullptr, static_cast<int>(components.size()));
}

QPointF MoveGesture::offsetFor(const Pointer& pointer) {
  QPointF offset =
      m_axisLock.constrained(pointer.picture - m_start, pointer.holds(Qt::ShiftModifier));
  const Snap snap =
      pointer.holds(Qt::ControlModifier)
          ? Snap()
          : Snapping::ofComposition(m_stage.composition()).snapFrame(m_union.translated(offset));
  m_stage.showSnap(snap);
  return offset + snap.correction;
}

void MoveGesture::update(const Pointer& pointer) {
  if (!m_deadZone.hasLeft(pointer.picture - m_start)) return;
  model::Composition& composition = m_stage.composition();
  m_step.open(*composition.context(), stepName(composition.selectedComponents()));
  const QPointF offset = offsetFor(pointer);
  for (const Moved& moved : m_moved) {
    if (!moved.component->context()) continue;  // deleted meanwhile
    moved.component->setOriginX(moved.frame.left() + offset.x());
    moved.component->setOriginY(moved.frame.top() + offset.y());
  }
}

void MoveGesture::finish(const Pointer& pointer) {
  update(pointer);
  m_step.finish();
  m_stage.showSnap({});
}

void MoveGesture::cancel() {
  m_step.cancel();
  m_stage.showSnap({});
}

}  // namespace canvas
