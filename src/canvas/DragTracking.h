#pragma once

#include <QPointF>
#include <optional>

namespace canvas {

/// Nothing moves until the pointer is far enough from where it was pressed; then everything does.
class DeadZone {
 public:
  static constexpr double size = 2;  ///< pixels of the picture, on either axis
  /// True from the first offset on that leaves the zone.
  [[nodiscard]] bool hasLeft(const QPointF& offset);

 private:
  bool m_left = false;
};

/// Keeps a drag on the axis on which it was going when the constraint was first asked for.
class AxisLock {
 public:
  /// The axis is chosen once in a drag; without the constraint the offset stays as it is.
  [[nodiscard]] QPointF constrained(const QPointF& offset, bool isOn);

 private:
  std::optional<Qt::Orientation> m_axis;
};

}  // namespace canvas
