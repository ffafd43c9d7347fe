#pragma once

#include "timeline/TYTimelineGeometry.h"

namespace timeline {

/// Turns the movement of the pointer into time: whole frames are taken, the rest is carried over,
/// from one drag to the next too, so that slow drags still get on and times never drift from the
/// pointer.
class DragDistance {
 public:
  /// Logical pixels that were not turned into time yet.
  [[nodiscard]] double deltaX() const { return m_deltaX; }
  void setDeltaX(double deltaX) { m_deltaX = deltaX; }
  void move(double points) { m_deltaX += points; }

  /// The whole frames of the distance, in seconds; they stay in it until they are taken.
  [[nodiscard]] double deltaTime(const TYTimelineGeometry& geometry) const {
    return geometry.timeFromPosition(m_deltaX);
  }
  void take(double time, const TYTimelineGeometry& geometry) {
    m_deltaX -= geometry.xPositionAtTime(time);
  }

 private:
  double m_deltaX = 0;
};

}  // namespace timeline
