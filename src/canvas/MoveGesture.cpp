#include "canvas/MoveGesture.h"

#include <algorithm>

#include "model/Composition.h"

namespace canvas {

using model::QuartzComponent;

MoveGesture::MoveGesture(CanvasStage& stage, const Pointer& start, Moves moves)
    : m_stage(stage), m_start(start.picture), m_moves(moves) {
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
  stage.showCursor(moves == Moves::Copies ? Qt::DragCopyCursor : Qt::ClosedHandCursor);
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
  if (!m_step.isOpen()) {
    const bool copies = m_moves == Moves::Copies;
    m_step.open(*composition.context(),
                copies ? tr("Duplicate") : stepName(composition.selectedComponents()));
    if (copies) makeCopies();
  }
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

void MoveGesture::makeCopies() {
  model::Composition& composition = m_stage.composition();
  QStringList warnings;
  QList<Moved> copies;
  // From the lowest up, as each copy comes to lie on top.
  std::sort(m_moved.begin(), m_moved.end(), [](const Moved& a, const Moved& b) {
    return a.component->zLevelComparison(*b.component);
  });
  for (const Moved& moved : std::as_const(m_moved)) {
    m_originals.append(moved.component);
    QuartzComponent* copy = QuartzComponent::createWithDictionaryData(
        moved.component->dictionaryWithData(), composition, warnings);
    if (!copy) continue;
    composition.addComponent(*copy);
    copies.append({copy, moved.frame});
  }
  m_moved = copies;
  // Each was alone selected as it came.
  const store::UndoSuspension suspension(*composition.context());
  for (const Moved& moved : std::as_const(m_moved)) moved.component->setSelected(true);
}

void MoveGesture::cancel() {
  m_step.cancel();
  for (QuartzComponent* original : std::as_const(m_originals)) original->setSelected(true);
  m_stage.showSnap({});
}

}  // namespace canvas
