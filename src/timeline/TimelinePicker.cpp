#include "timeline/TimelinePicker.h"

#include <cmath>

#include "model/Composition.h"
#include "timeline/TimeRulerPainter.h"
#include "timeline/TimelineScene.h"

namespace timeline {

using Measures = TimelineMeasures;

namespace {

constexpr double reach = 1;  // around a key frame or stop frame

}  // namespace

TimelineHit::Part TimelinePicker::partAt(double x, const QRectF& bar) {
  if (x < bar.left() || x >= bar.right()) return TimelineHit::NoPart;
  if (x < bar.left() + Measures::barEdge) return TimelineHit::StartEdge;
  if (x >= bar.right() - Measures::barEdge) return TimelineHit::EndEdge;
  return TimelineHit::Body;
}

Qt::CursorShape TimelinePicker::cursorForDraggingPart(TimelineHit::Part part) {
  switch (part) {
    case TimelineHit::StartEdge:
    case TimelineHit::EndEdge:
      return Qt::SizeHorCursor;
    case TimelineHit::Body:
      return Qt::PointingHandCursor;
    case TimelineHit::NoPart:
      break;
  }
  return Qt::ArrowCursor;
}

TimelineHit TimelinePicker::hitAt(const QPointF& point) const {
  TimelineHit hit;
  if (point.y() < 0) return hit;
  hit.rowIndex = static_cast<int>(point.y() / Measures::componentHeight);
  hit.row = m_scene.rows.at(hit.rowIndex);
  if (hit.row.isComponent()) {
    const model::QuartzComponent& component = *hit.row.component;
    hit.part = partAt(point.x(), m_scene.geometry.componentRectForRow(
                                     component.startTime(), component.duration(), hit.rowIndex));
    if (hit.part != TimelineHit::NoPart) hit.kind = TimelineHit::Kind::Component;
  } else if (hit.row.attribute) {
    double nearest = Measures::keyframeSize.width();
    for (const double time : KeyFrameSelection::timesOf(*hit.row.attribute)) {
      const QRectF diamond = m_scene.geometry.keyFrameRect(time, hit.rowIndex);
      const double distance = std::abs(diamond.center().x() - point.x());
      if (!diamond.adjusted(-reach, -reach, reach, reach).contains(point) || distance > nearest)
        continue;
      nearest = distance;
      hit.kind = TimelineHit::Kind::KeyFrame;
      hit.keyFrame = {hit.row.attribute, time};
    }
  }
  return hit;
}

model::StopFrame* TimelinePicker::stopFrameAt(const QPointF& point) const {
  if (!m_scene.composition) return nullptr;
  model::StopFrame* found = nullptr;
  double nearest = Measures::stopFrameSize.width();
  for (model::StopFrame* stopFrame : m_scene.composition->stopFrames()) {
    const QRectF rect = TimeRulerPainter::stopFrameRect(m_scene.geometry, stopFrame->timepoint());
    const double distance = std::abs(rect.center().x() - point.x());
    if (!rect.adjusted(-reach, -reach, reach, reach).contains(point) || distance >= nearest)
      continue;
    nearest = distance;
    found = stopFrame;
  }
  return found;
}

bool TimelinePicker::isOnEndHandle(const QPointF& point) const {
  return m_scene.composition &&
         TimeRulerPainter::endHandleRect(m_scene.geometry).adjusted(-2, -1, 3, 3).contains(point);
}

}  // namespace timeline
