#pragma once

#include <QString>

namespace canvas {

/// A unit of the canvas's rulers: how many points of the screen one of it takes.
struct RulerUnit {
  QString name;
  QString abbreviation;
  double pointsPerUnit = 1;

  /// The fixed modes have units of their own, "PointsFit" follows the factor of the fit, and all
  /// others are "Points". Readings are pixels of the picture in every mode.
  [[nodiscard]] static RulerUnit forZoomMode(qint32 zoomMode, double zoomFactor);
  friend bool operator==(const RulerUnit&, const RulerUnit&) = default;
};

/// How a ruler is divided, in units.
struct RulerScale {
  double label = 100;  ///< between two numbers
  double tick = 10;    ///< between two ticks; every fifth is a longer one

  /// The finest division whose numbers do not crowd.
  [[nodiscard]] static RulerScale forUnit(const RulerUnit& unit);
  friend bool operator==(const RulerScale&, const RulerScale&) = default;
};

}  // namespace canvas
