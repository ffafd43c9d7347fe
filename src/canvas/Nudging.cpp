#include "canvas/Nudging.h"

#include <QKeyEvent>

#include "canvas/MoveGesture.h"
#include "model/Composition.h"

namespace canvas {

std::optional<QPointF> Nudging::deltaOf(const QKeyEvent& event) {
  const Qt::KeyboardModifiers others =
      event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  if (others != Qt::NoModifier) return std::nullopt;
  const double length = event.modifiers().testFlag(Qt::ShiftModifier) ? far : near;
  switch (event.key()) {
    case Qt::Key_Left:
      return QPointF(-length, 0);
    case Qt::Key_Right:
      return QPointF(length, 0);
    case Qt::Key_Up:
      return QPointF(0, length);
    case Qt::Key_Down:
      return QPointF(0, -length);
    default:
      return std::nullopt;
  }
}

bool Nudging::press(const QKeyEvent& event) {
  const auto delta = deltaOf(event);
  const auto selected = m_composition.selectedComponents();
  if (!delta || selected.isEmpty()) return false;
  if (!event.isAutoRepeat()) finish();
  if (!m_step.isOpen()) {
    const bool continues = continuesBurst();
    m_step.open(*m_composition.context(), MoveGesture::stepName(selected));
    if (continues) m_step.continuePrevious();
  }
  moveSelection(delta->x(), delta->y());
  return true;
}

void Nudging::release(const QKeyEvent& event) {
  if (!event.isAutoRepeat()) finish();
}

void Nudging::finish() {
  if (!m_step.isOpen()) return;
  m_step.finish();
  m_lastStep = m_composition.context()->history().index();
  m_sinceLast.start();
}

bool Nudging::continuesBurst() const {
  return m_sinceLast.isValid() && m_sinceLast.elapsed() < burst &&
         m_composition.context()->history().index() == m_lastStep;
}

void Nudging::moveSelection(double deltaX, double deltaY) {
  const auto selected = m_composition.selectedComponents();
  if (selected.isEmpty()) return;
  const store::UndoStep step(*m_composition.context(), MoveGesture::stepName(selected));
  for (model::QuartzComponent* component : selected) component->moveByDelta(deltaX, deltaY);
}

}  // namespace canvas
