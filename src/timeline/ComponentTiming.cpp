#include "timeline/ComponentTiming.h"

#include <algorithm>

#include "model/Composition.h"

namespace timeline {

using model::QuartzComponent;
using Times = ComponentTiming::Times;

Times ComponentTiming::withStartMoved(const Times& times, double delta, Duration duration,
                                      double compositionDuration) {
  const double length = times.end - times.start;
  double start = times.start + delta;
  bool isPulledBack = false;
  if (duration == Duration::Keep && start + length > compositionDuration) {
    start = compositionDuration - length;
    isPulledBack = true;
  }
  if (duration == Duration::Change && start >= times.end) return times;
  if (start < 0 && !isPulledBack) start = 0;
  if (start == times.start) return times;
  return {start, duration == Duration::Keep ? start + length : times.end, times.keyFrames + delta};
}

Times ComponentTiming::withEndMoved(const Times& times, double delta) {
  const double end = times.end + delta;
  return end > times.start ? Times{times.start, end, times.keyFrames} : times;
}

Times ComponentTiming::of(const QuartzComponent& component) {
  return {component.startTime(), component.endTime(), 0};
}

void ComponentTiming::apply(QuartzComponent& component, const Times& times) {
  if (times.keyFrames != 0) {
    // Key frames stay within their component's times: until they have moved, these reach over the
    // old place and the new one.
    component.setStartTime(std::min(component.startTime(), times.start));
    component.setEndTime(std::max(component.endTime(), times.end));
    for (model::Attribute* attribute : component.children())
      if (attribute->animateable())
        attribute->adjustTimepointsBy(times.keyFrames, model::Attribute::Moved::All);
  }
  component.setStartTime(times.start);
  component.setEndTime(times.end);
}

void ComponentTiming::adjustStartTime(QuartzComponent& component, Duration duration, double delta) {
  const Times now = of(component);
  const double limit = component.composition() ? component.composition()->duration() : now.end;
  const Times moved = withStartMoved(now, delta, duration, limit);
  if (moved != now) apply(component, moved);
}

}  // namespace timeline
