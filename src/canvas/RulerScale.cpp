#include "canvas/RulerScale.h"

#include <array>

namespace canvas {

namespace {

constexpr double leastLabelDistance = 80;  // points
constexpr double finest = 10;              // units between two numbers
constexpr double coarsest = 1e6;

}  // namespace

RulerUnit RulerUnit::forZoomMode(qint32 zoomMode, double zoomFactor) {
  const auto unit = [&](const QString& suffix) {
    return RulerUnit{QStringLiteral("Points") + suffix, QStringLiteral("pt"), zoomFactor};
  };
  switch (zoomMode) {
    case 0:
      return unit(QStringLiteral("Fit"));
    case 50:
    case 150:
    case 200:
      return unit(QString::number(zoomMode));
    default:
      return unit({});
  }
}

RulerScale RulerScale::forUnit(const RulerUnit& unit) {
  for (double decade = finest; decade < coarsest; decade *= 10)
    for (const double factor : {1.0, 2.0, 4.0}) {
      const double label = decade * factor;
      if (label * unit.pointsPerUnit >= leastLabelDistance) return {label, label / 10};
    }
  return {coarsest, coarsest / 10};
}

}  // namespace canvas
