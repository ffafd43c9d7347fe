#pragma once

#include <memory>
#include <optional>

#include "canvas/Gesture.h"

namespace canvas {

/// The gesture that is going on, if any.
class GestureRunner {
 public:
  ~GestureRunner() { cancel(); }
  GestureRunner() = default;
  GestureRunner(const GestureRunner&) = delete;
  GestureRunner& operator=(const GestureRunner&) = delete;

  [[nodiscard]] bool isActive() const { return m_gesture != nullptr; }
  [[nodiscard]] Qt::MouseButton button() const { return m_button; }
  /// It goes on until the button is released; one that was going on is cancelled.
  void begin(std::unique_ptr<Gesture> gesture, Qt::MouseButton button) {
    cancel();
    m_gesture = std::move(gesture);
    m_button = button;
  }
  void update(const Pointer& pointer) {
    m_last = pointer;
    if (m_gesture) m_gesture->update(pointer);
  }
  /// The same place with other keys held.
  void updateModifiers(Qt::KeyboardModifiers modifiers) {
    if (!m_gesture || !m_last || m_last->modifiers == modifiers) return;
    m_last->modifiers = modifiers;
    m_gesture->update(*m_last);
  }
  void finish(const Pointer& pointer) {
    if (const auto gesture = take()) gesture->finish(pointer);
  }
  void cancel() {
    if (const auto gesture = take()) gesture->cancel();
  }

 private:
  [[nodiscard]] std::unique_ptr<Gesture> take() {
    m_last.reset();
    return std::move(m_gesture);
  }

  std::unique_ptr<Gesture> m_gesture;
  std::optional<Pointer> m_last;
  Qt::MouseButton m_button = Qt::NoButton;
};

}  // namespace canvas
