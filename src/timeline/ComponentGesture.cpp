#include "timeline/ComponentGesture.h"

#include <cmath>

#include "model/Composition.h"
#include "timeline/DragDistance.h"

namespace timeline {

using Duration = ComponentTiming::Duration;
using Times = ComponentTiming::Times;
using Measures = TimelineMeasures;
using Space = TYTimelineGeometry::Space;

ComponentGesture::ComponentGesture(TimelineStage& stage, const TimelineHit& hit,
                                   const TimelinePointer& start)
    : RowGesture(stage, hit, start) {
  stage.showCursor(TimelinePicker::cursorForDraggingPart(hit.part));
}

void ComponentGesture::begin() {
  TimeSnapping::LeftOut leftOut;
  for (model::QuartzComponent* component : stage().composition().selectedComponents()) {
    const Times times = ComponentTiming::of(*component);
    m_moved.push_back({component, times, times});
    leftOut.components.insert(component);
    if (const int row = stage().rows().rowOf(*component); row >= 0)
      m_marks.barGhosts.append(stage()
                                   .geometry()
                                   .componentRectForRow(times.start, times.end - times.start, row)
                                   .adjusted(0, Measures::barInset, 0, -Measures::barInset));
  }
  m_snapping = TimeSnapping::ofComposition(stage().composition(), leftOut);
}

QList<double> ComponentGesture::edges() const {
  QList<double> times;
  for (const Moved& moved : m_moved) {
    if (hit().part != TimelineHit::EndEdge) times.append(moved.now.start);
    if (hit().part != TimelineHit::StartEdge) times.append(moved.now.end);
  }
  return times;
}

double ComponentGesture::deltaFor(const TimelinePointer& pointer) {
  DragDistance& distance = stage().distance();
  const TYTimelineGeometry& geometry = stage().geometry();
  distance.move(takeMovement(pointer));
  double delta = distance.deltaTime(geometry);
  m_marks.snapTime.reset();
  if (!pointer.holds(Qt::ControlModifier)) {
    const TimeSnapping::Snap snap =
        m_snapping->snapped(edges(), distance.deltaX() / geometry.unitWidth(), geometry);
    m_marks.snapTime = snap.target;
    if (snap.target) delta = snap.delta;
  }
  m_isSnapped = m_marks.snapTime.has_value();
  distance.take(delta, geometry);
  return delta;
}

Times ComponentGesture::moved(const Times& times, double delta) const {
  switch (hit().part) {
    case TimelineHit::StartEdge:
    case TimelineHit::Body:
      return ComponentTiming::withStartMoved(
          times, delta, hit().part == TimelineHit::Body ? Duration::Keep : Duration::Change,
          stage().composition().duration());
    case TimelineHit::EndEdge:
      return ComponentTiming::withEndMoved(times, delta);
    case TimelineHit::NoPart:
      break;
  }
  return times;
}

QString ComponentGesture::stepName(TimelineHit::Part part,
                                   const QList<model::QuartzComponent*>& components) {
  const int count = static_cast<int>(components.size());
  const QString title = components.first()->title();
  switch (part) {
    case TimelineHit::StartEdge:
      return count == 1 ? tr("Change Start of %1").arg(title)
                        : tr("Change Start of %n Components", nullptr, count);
    case TimelineHit::EndEdge:
      return count == 1 ? tr("Change End of %1").arg(title)
                        : tr("Change End of %n Components", nullptr, count);
    case TimelineHit::Body:
    case TimelineHit::NoPart:
      break;
  }
  return count == 1 ? tr("Move %1").arg(title) : tr("Move %n Components", nullptr, count);
}

void ComponentGesture::drag(const TimelinePointer& pointer) {
  if (!m_snapping) begin();
  if (m_moved.empty()) return;
  const double delta = deltaFor(pointer);
  if (delta != 0) {
    for (Moved& one : m_moved) one.now = moved(one.now, delta);
    apply();
  }
  show();
}

void ComponentGesture::apply() {
  QList<model::QuartzComponent*> components;
  for (const Moved& one : m_moved) components.append(one.component);
  m_step.restart(*stage().composition().context(), stepName(hit().part, components));
  for (const Moved& one : m_moved)
    if (one.component->context() && one.now != one.before)
      ComponentTiming::apply(*one.component, one.now);
}

void ComponentGesture::show() {
  const auto* component = hit().row.component;
  const double time =
      hit().part == TimelineHit::EndEdge ? component->endTime() : component->startTime();
  m_marks.guideTime = time;
  stage().showMarks(m_marks);
  stage().updateTooltipTime(time, {stage().geometry().xPositionAtTime(time, Space::Rows), -1});
}

void ComponentGesture::finishDrag() {
  m_step.finish();
  // What is left of a snap is no movement that the next drag should make up for.
  if (m_isSnapped) stage().distance().setDeltaX(0);
}

}  // namespace timeline
