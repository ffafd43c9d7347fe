#include "canvas/Snapping.h"

#include <cmath>

#include "model/Composition.h"

namespace canvas {

namespace {

std::optional<double> distanceWithin(double reach, double guide, std::initializer_list<double> at) {
  for (const double edge : at)
    if (std::abs(guide - edge) < reach) return guide - edge;
  return std::nullopt;
}

}  // namespace

Snapping Snapping::ofComposition(const model::Composition& composition) {
  QList<GuideLine> guides;
  if (composition.showsRulers())
    for (const model::Ruler* ruler : composition.rulers())
      guides.append({ruler->position(), ruler->horizontal()});
  return Snapping(std::move(guides));
}

Snap Snapping::snapFrame(const QRectF& frame) const {
  Snap snap;
  for (const GuideLine& guide : m_guides) {
    std::optional<double>& taken = guide.horizontal ? snap.horizontal : snap.vertical;
    if (taken) continue;
    const auto distance =
        guide.horizontal ? distanceWithin(reach, guide.position, {frame.top(), frame.bottom()})
                         : distanceWithin(reach, guide.position, {frame.left(), frame.right()});
    if (!distance) continue;
    taken = guide.position;
    (guide.horizontal ? snap.correction.ry() : snap.correction.rx()) = *distance;
  }
  return snap;
}

Snap Snapping::snapPoint(const QPointF& point) const {
  return snapFrame(QRectF(point, QSizeF(0, 0)));
}

}  // namespace canvas
