#include "canvas/CanvasKeyboard.h"

#include <QKeyEvent>
#include <utility>

#include "model/Composition.h"

namespace canvas {

namespace {

bool isSpace(const QKeyEvent& event) {
  return event.key() == Qt::Key_Space && event.modifiers() == Qt::NoModifier;
}

}  // namespace

bool CanvasKeyboard::claims(const QKeyEvent& event) const {
  return isSpace(event) || (Nudging::deltaOf(event) && m_composition.validSelection());
}

bool CanvasKeyboard::press(const QKeyEvent& event) {
  if (!isSpace(event)) return m_nudging.press(event);
  if (m_space == Space::Up && !event.isAutoRepeat()) m_space = Space::Down;
  return true;
}

bool CanvasKeyboard::release(const QKeyEvent& event) {
  m_nudging.release(event);
  if (event.key() != Qt::Key_Space || event.isAutoRepeat()) return false;
  if (std::exchange(m_space, Space::Up) == Space::Down)
    m_composition.setPlayMode(!m_composition.playMode());
  return true;
}

void CanvasKeyboard::letGo() {
  m_space = Space::Up;
  m_nudging.finish();
}

void CanvasKeyboard::useSpace() {
  if (m_space == Space::Down) m_space = Space::Used;
}

}  // namespace canvas
