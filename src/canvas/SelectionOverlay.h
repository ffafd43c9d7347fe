#pragma once

#include <QRectF>
#include <array>

#include "canvas/CanvasGeometry.h"

class QPainter;

namespace model {
class QuartzComponent;
}

namespace canvas {

/// Outline and handles of one component as they are painted. In the view's logical pixels, before
/// the rotation about the outline's middle.
class SelectionOverlay {
 public:
  static constexpr double leastHandle = 7;  ///< points of a painted handle's side

  SelectionOverlay(const model::QuartzComponent& component, const CanvasGeometry& geometry);

  /// Whether the component shows overlays at all.
  [[nodiscard]] static bool isShown(const model::QuartzComponent& component);
  [[nodiscard]] const QRectF& outline() const { return m_outline; }
  /// In the order of the model's handles; empty where the outline is too small for it.
  [[nodiscard]] const std::array<QRectF, 8>& handles() const { return m_handles; }
  /// 1 to 8 for the painted handle at the view's point, else 0.
  [[nodiscard]] int handleAt(const QPointF& viewPoint) const;
  /// What painting touches.
  [[nodiscard]] QRect bounds() const;

  void paint(QPainter& painter) const;

 private:
  void layOutHandles(double side);
  void paintUpright(QPainter& painter) const;
  void paintTurned(QPainter& painter) const;
  [[nodiscard]] QTransform turn() const;

  QRectF m_outline;
  std::array<QRectF, 8> m_handles;
  double m_degrees;  ///< counter-clockwise
};

}  // namespace canvas
