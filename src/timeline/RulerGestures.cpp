#include "timeline/RulerGestures.h"

#include <cmath>
#include <tuple>

#include "model/Composition.h"
#include "timeline/RowGesture.h"
#include "timeline/TransportCommands.h"

namespace timeline {

using Space = TYTimelineGeometry::Space;

namespace {

double frameOf(const TYTimelineGeometry& geometry) {
  return 1 / geometry.content().rate.framesPerSecond();
}

void showTime(TimelineStage& stage, double time) {
  stage.updateTooltipTime(time, {stage.geometry().xPositionAtTime(time, Space::Rows), -1});
}

}  // namespace

ScrubGesture::ScrubGesture(TimelineStage& stage, const TimelinePointer& start)
    : m_stage(stage),
      m_before(stage.composition().editorTimepoint()),
      m_snapping(TimeSnapping::ofComposition(stage.composition(), {.editorTime = true})) {
  stage.beginTooltip();
  update(start);
}

void ScrubGesture::update(const TimelinePointer& pointer) {
  const TYTimelineGeometry& geometry = m_stage.geometry();
  // The middle of the pixel: a frame's mark stands on the pixel that is nearest to it.
  double time = std::max(0.0, geometry.timeFromPosition(pointer.rows.x() + 0.5, Space::Rows));
  TimelineMarks marks;
  if (pointer.holds(Qt::ShiftModifier)) {
    const auto snap = m_snapping.snapped({time}, 0, geometry);
    time += snap.delta;
    marks.snapTime = snap.target;
  }
  m_stage.showMarks(marks);
  m_stage.setTime(time);
  showTime(m_stage, m_stage.composition().editorTimepoint());
}

void ScrubGesture::finish(const TimelinePointer& pointer) {
  update(pointer);
  m_stage.showMarks({});
  m_stage.finishTooltip();
}

void ScrubGesture::cancel() {
  m_stage.composition().setEditorTimepoint(m_before);
  m_stage.composition().sendChangeNotificationForValues();
  m_stage.showMarks({});
  m_stage.finishTooltip();
}

TimeGesture::TimeGesture(TimelineStage& stage, const TimelinePointer& start, double time,
                         TimeSnapping snapping)
    : m_stage(stage),
      m_snapping(std::move(snapping)),
      m_startX(start.rows.x()),
      m_before(time),
      m_time(time) {
  stage.showCursor(Qt::SizeHorCursor);
  stage.beginTooltip();
}

double TimeGesture::timeFor(const TimelinePointer& pointer, TimelineMarks& marks) const {
  const TYTimelineGeometry& geometry = m_stage.geometry();
  double delta = (pointer.rows.x() - m_startX) / geometry.unitWidth();
  if (!pointer.holds(Qt::ControlModifier)) {
    const auto snap = m_snapping.snapped({m_before}, delta, geometry);
    marks.snapTime = snap.target;
    delta = snap.delta;
  }
  // What it snaps to may lie between two frames.
  return allowed(
      foundation::Timecode::fromSeconds(m_before + delta, geometry.content().rate).seconds());
}

void TimeGesture::update(const TimelinePointer& pointer) {
  if (!m_isDragging && std::abs(pointer.rows.x() - m_startX) < RowGesture::deadZone) return;
  m_isDragging = true;
  TimelineMarks marks;
  const double time = timeFor(pointer, marks);
  if (time != m_time) {
    m_time = time;
    m_step.restart(*m_stage.composition().context(), stepName());
    if (time != m_before) setTime(time);
  }
  marks.guideTime = time;
  m_stage.showMarks(marks);
  showTime(m_stage, time);
}

void TimeGesture::finish(const TimelinePointer& pointer) {
  update(pointer);
  m_step.finish();
  m_stage.showMarks({});
  m_stage.finishTooltip();
  if (!m_isDragging) clicked();
}

void TimeGesture::cancel() {
  m_step.cancel();
  m_stage.showMarks({});
  m_stage.finishTooltip();
}

StopFrameGesture::StopFrameGesture(TimelineStage& stage, model::StopFrame& stopFrame,
                                   const TimelinePointer& start)
    : TimeGesture(stage, start, stopFrame.timepoint(),
                  TimeSnapping::ofComposition(stage.composition(), {.stopFrames = true})),
      m_stopFrame(stopFrame) {}

double StopFrameGesture::allowed(double time) const {
  std::ignore = stage().composition().validateEditorTimepoint(time);
  return time;
}

void StopFrameGesture::clicked() {
  TransportCommands(stage().composition())
      .setTime(m_stopFrame.timepoint(), TransportCommands::Updated::Attributes);
}

void StopFrameGesture::setTime(double time) {
  TransportCommands(stage().composition()).moveStopFrame(m_stopFrame, time);
}

DurationGesture::DurationGesture(TimelineStage& stage, const TimelinePointer& start)
    : TimeGesture(stage, start, stage.composition().duration(),
                  TimeSnapping::ofComposition(stage.composition(), {.end = true})) {}

double DurationGesture::allowed(double time) const {
  return std::max(time, frameOf(stage().geometry()));
}

void DurationGesture::setTime(double time) {
  stage().composition().setDuration(time);
}

}  // namespace timeline
