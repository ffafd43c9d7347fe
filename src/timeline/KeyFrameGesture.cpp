#include "timeline/KeyFrameGesture.h"

#include <limits>

#include "model/Composition.h"
#include "timeline/DragDistance.h"

namespace timeline {

using Space = TYTimelineGeometry::Space;

namespace {

constexpr qsizetype mostGhosts = 400;

}  // namespace

KeyFrameGesture::KeyFrameGesture(TimelineStage& stage, const TimelineHit& hit,
                                 const TimelinePointer& start)
    : RowGesture(stage, hit, start) {
  stage.showCursor(Qt::PointingHandCursor);
}

void KeyFrameGesture::begin() {
  m_attributes = stage().composition().attributesWithSelectedKeyframes();
  QSet<double> times;
  for (const model::Attribute* attribute : std::as_const(m_attributes)) {
    const int row = stage().rows().rowOf(*attribute);
    for (const double time : KeyFrameSelection::timesOf(*attribute)) {
      if (!attribute->isTimePointSelected(time)) continue;
      ++m_count;
      times.insert(time);
      if (row >= 0 && m_marks.keyFrameGhosts.size() < mostGhosts)
        m_marks.keyFrameGhosts.append(stage().geometry().keyFrameRect(time, row));
    }
  }
  m_times = times.values();
  m_smallest = m_times.isEmpty() ? 0 : *std::min_element(m_times.cbegin(), m_times.cend());
  m_snapping = TimeSnapping::ofComposition(stage().composition(), {});
}

void KeyFrameGesture::takeDelta(const TimelinePointer& pointer) {
  DragDistance& distance = stage().distance();
  const TYTimelineGeometry& geometry = stage().geometry();
  distance.move(takeMovement(pointer));
  double delta = distance.deltaTime(geometry);
  m_marks.snapTime.reset();
  if (!pointer.holds(Qt::ControlModifier)) {
    const TimeSnapping::Snap snap =
        m_snapping->snapped(m_times, m_delta + distance.deltaX() / geometry.unitWidth(), geometry);
    m_marks.snapTime = snap.target;
    if (snap.target) delta = snap.delta - m_delta;
  }
  distance.take(delta, geometry);
  m_delta += delta;
}

void KeyFrameGesture::drag(const TimelinePointer& pointer) {
  if (!m_snapping) begin();
  if (m_attributes.isEmpty()) return;
  const double before = m_delta;
  takeDelta(pointer);
  if (m_delta != before) m_smallest = apply();
  m_marks.guideTime = m_smallest;
  stage().showMarks(m_marks);
  stage().updateTooltipTime(m_smallest,
                            {stage().geometry().xPositionAtTime(m_smallest, Space::Rows), -1});
}

double KeyFrameGesture::apply() {
  m_step.restart(*stage().composition().context(),
                 m_count == 1 ? tr("Move Key Frame") : tr("Move %n Key Frames", nullptr, m_count));
  double smallest = std::numeric_limits<double>::max();
  for (model::Attribute* attribute : std::as_const(m_attributes))
    if (attribute->context())
      smallest = std::min(
          smallest, attribute->adjustTimepointsBy(m_delta, model::Attribute::Moved::OnlySelected));
  return smallest;
}

void KeyFrameGesture::finishDrag() {
  m_step.finish();
  if (m_marks.snapTime) stage().distance().setDeltaX(0);
}

}  // namespace timeline
