#pragma once

#include <QRectF>
#include <optional>

#include "canvas/RulerScale.h"

class QPainter;

namespace canvas {

/// Paints a ruler strip along the upper or the left edge of the canvas. Positions along it are
/// logical pixels of the strip.
struct RulerPainter {
  static constexpr double thickness = 18;

  /// A stretch of units along the ruler.
  struct Extent {
    double from = 0;
    double to = 0;
    friend bool operator==(const Extent&, const Extent&) = default;
  };

  Qt::Orientation orientation = Qt::Horizontal;
  RulerUnit unit;
  double origin = 0;              ///< where the reading is 0
  std::optional<Extent> extent;   ///< of the selection
  std::optional<double> pointer;  ///< where the pointer is

  void paint(QPainter& painter, double length) const;
  /// Readings grow to the right and upwards.
  [[nodiscard]] double positionOf(double units) const;
  friend bool operator==(const RulerPainter&, const RulerPainter&) = default;

 private:
  void paintExtent(QPainter& painter) const;
  void paintTicks(QPainter& painter, double length) const;
  void paintLabel(QPainter& painter, double at, double length, double reading) const;
};

}  // namespace canvas
