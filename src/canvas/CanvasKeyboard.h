#pragma once

#include "canvas/Nudging.h"

namespace canvas {

/// What keys do on the canvas: arrows nudge, Space plays when it is let go, unless the view was
/// dragged while it was held.
class CanvasKeyboard {
 public:
  explicit CanvasKeyboard(model::Composition& composition)
      : m_composition(composition), m_nudging(composition) {}

  /// Whether the key is for the canvas even where a command of the window has it as its shortcut.
  [[nodiscard]] bool claims(const QKeyEvent& event) const;
  /// True when the key did something.
  bool press(const QKeyEvent& event);
  bool release(const QKeyEvent& event);
  /// Ends what held keys have begun.
  void letGo();

  [[nodiscard]] bool holdsSpace() const { return m_space != Space::Up; }
  /// The view is dragged.
  void useSpace();
  [[nodiscard]] Nudging& nudging() { return m_nudging; }

 private:
  model::Composition& m_composition;
  Nudging m_nudging;
  enum class Space { Up, Down, Used };
  Space m_space = Space::Up;
};

}  // namespace canvas
