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
/// the rotation about the outline's middle. Where the outline is so small that handles would cover
/// what the component is moved by, they lie outside of it.
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
  /// Handles lie outside; then they and what is between them take the pointer, whatever lies there.
  [[nodiscard]] bool givesWay() const { return m_givesWay; }
  /// Whether the component can be taken hold of there, between its handles.
  [[nodiscard]] bool holdContains(const QPointF& viewPoint) const;
  /// What painting touches.
  [[nodiscard]] QRect bounds() const;

  void paint(QPainter& painter) const;

 private:
  /// Where handles begin along one axis: at its lower end, in the middle, at its upper end. Without
  /// a middle one where there is no room for it.
  struct Places {
    std::array<double, 3> at;
    bool hasMiddle;
  };
  [[nodiscard]] static Places placesAlong(double low, double high, double side, bool outside);
  void layOutHandles(double side);
  void paintUpright(QPainter& painter) const;
  void paintTurned(QPainter& painter) const;
  [[nodiscard]] QTransform turn() const;

  QRectF m_outline;
  QRectF m_hold;  ///< the outline, large enough for a hand where handles lie outside
  bool m_givesWay = false;
  std::array<QRectF, 8> m_handles;
  double m_degrees;  ///< counter-clockwise
};

}  // namespace canvas
