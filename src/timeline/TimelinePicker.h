#pragma once

#include <QPointF>
#include <Qt>

#include "timeline/KeyFrameSelection.h"
#include "timeline/TimelineRows.h"

namespace model {
class StopFrame;
}

namespace timeline {

struct TimelineScene;

/// What lies at a place of the rows.
struct TimelineHit {
  enum class Kind { Nothing, Component, KeyFrame };
  enum Part { StartEdge = 0, EndEdge = 1, Body = 2, NoPart = 3 };

  Kind kind = Kind::Nothing;
  int rowIndex = -1;
  TimelineRow row;
  Part part = NoPart;          ///< of a component's bar
  KeyFrameReference keyFrame;  ///< of an attribute
};

/// Finds what lies under the pointer.
class TimelinePicker {
 public:
  explicit TimelinePicker(const TimelineScene& scene) : m_scene(scene) {}

  /// The point is one of the space of the rows.
  [[nodiscard]] TimelineHit hitAt(const QPointF& point) const;
  /// In the time ruler, right of its corner; points are those of the ruler there.
  [[nodiscard]] model::StopFrame* stopFrameAt(const QPointF& point) const;
  [[nodiscard]] bool isOnEndHandle(const QPointF& point) const;

  /// Start before end before body, where a bar is short.
  [[nodiscard]] static TimelineHit::Part partAt(double x, const QRectF& bar);
  [[nodiscard]] static Qt::CursorShape cursorForDraggingPart(TimelineHit::Part part);

 private:
  const TimelineScene& m_scene;
};

}  // namespace timeline
