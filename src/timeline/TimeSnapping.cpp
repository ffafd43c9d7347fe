#include "timeline/TimeSnapping.h"

#include <algorithm>
#include <cmath>

#include "model/Composition.h"
#include "timeline/TYTimelineGeometry.h"

namespace timeline {

TimeSnapping::TimeSnapping(QList<double> targets) : m_targets(std::move(targets)) {
  std::sort(m_targets.begin(), m_targets.end());
}

TimeSnapping TimeSnapping::ofComposition(const model::Composition& composition,
                                         const LeftOut& leftOut) {
  QList<double> targets{0};
  if (!leftOut.end) targets.append(composition.duration());
  if (!leftOut.editorTime) targets.append(composition.editorTimepoint());
  if (!leftOut.stopFrames) targets.append(composition.stopFrameTimepoints());
  for (const model::QuartzComponent* component : composition.components())
    if (!leftOut.components.contains(component))
      targets << component->startTime() << component->endTime();
  return TimeSnapping(std::move(targets));
}

TimeSnapping::Snap TimeSnapping::snapped(const QList<double>& times, double delta,
                                         const TYTimelineGeometry& geometry) const {
  Snap best{delta};
  double nearest = reach / geometry.unitWidth();
  for (const double time : times) {
    const double place = time + delta;
    auto target = std::lower_bound(m_targets.cbegin(), m_targets.cend(), place);
    if (target != m_targets.cbegin()) --target;
    for (int i = 0; i < 2 && target != m_targets.cend(); ++i, ++target) {
      const double distance = std::abs(*target - place);
      if (distance >= nearest) continue;
      nearest = distance;
      best = {*target - time, *target};
    }
  }
  return best;
}

}  // namespace timeline
