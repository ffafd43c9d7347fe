#pragma once

#include <QElapsedTimer>
#include <QPointF>
#include <optional>

#include "canvas/DragStep.h"

class QKeyEvent;

namespace model {
class Composition;
}

namespace canvas {

/// Moves the selection by the arrow keys: by a pixel of the picture, with Shift by ten. What
/// follows in one go, by holding a key or pressing it again soon, is one undo step.
class Nudging {
 public:
  static constexpr double near = 1;
  static constexpr double far = 10;
  static constexpr int burst = 800;  ///< milliseconds between keys of one burst

  explicit Nudging(model::Composition& composition) : m_composition(composition) {}

  /// What the key moves by (y up); nothing for other keys.
  [[nodiscard]] static std::optional<QPointF> deltaOf(const QKeyEvent& event);
  /// True when the key moved something.
  bool press(const QKeyEvent& event);
  void release(const QKeyEvent& event);
  /// Ends a step that is open, for whatever comes next.
  void finish();

  /// One step.
  void moveSelection(double deltaX, double deltaY);

 private:
  [[nodiscard]] bool continuesBurst() const;

  model::Composition& m_composition;
  DragStep m_step;
  QElapsedTimer m_sinceLast;
  int m_lastStep = -1;  ///< place in the history of the last step of the burst
};

}  // namespace canvas
