#pragma once

#include <QPointF>
#include <Qt>

#include "timeline/TimelineScene.h"

namespace timeline {

class DragDistance;
class RowSelecting;

/// Where the pointer is and what is held with it.
struct TimelinePointer {
  QPointF rows;    ///< in the space of the rows
  QPointF screen;  ///< logical pixels of the screen
  Qt::KeyboardModifiers modifiers = Qt::NoModifier;

  [[nodiscard]] bool holds(Qt::KeyboardModifier modifier) const {
    return modifiers.testFlag(modifier);
  }
};

/// What a gesture may ask of the timeline that it happens in.
class TimelineStage {
 public:
  virtual ~TimelineStage() = default;
  TimelineStage() = default;
  TimelineStage(const TimelineStage&) = delete;
  TimelineStage& operator=(const TimelineStage&) = delete;

  [[nodiscard]] virtual model::Composition& composition() = 0;
  [[nodiscard]] virtual const TYTimelineGeometry& geometry() const = 0;
  [[nodiscard]] virtual const TimelineRows& rows() const = 0;
  /// What clicks in rows select; remembers the last one.
  [[nodiscard]] virtual RowSelecting& selecting() = 0;
  /// The distance that drags have not turned into time yet.
  [[nodiscard]] virtual DragDistance& distance() = 0;
  virtual void setTime(double time) = 0;
  /// Until the gesture ends.
  virtual void showCursor(Qt::CursorShape shape) = 0;
  virtual void showMarks(const TimelineMarks& marks) = 0;

  // The plate with a time. It is hidden when the gesture ends.
  virtual void beginTooltip() = 0;
  /// At a place of the rows; with a negative x or y at the pointer's.
  virtual void updateTooltipTime(double time, const QPointF& position) = 0;
  virtual void finishTooltip() = 0;
};

/// Something done with the pointer from press to release. Changes of the document are one undo step
/// that ends with finish(); cancel() leaves nothing behind.
class TimelineGesture {
 public:
  virtual ~TimelineGesture() = default;
  TimelineGesture() = default;
  TimelineGesture(const TimelineGesture&) = delete;
  TimelineGesture& operator=(const TimelineGesture&) = delete;

  virtual void update(const TimelinePointer& pointer) = 0;
  virtual void finish(const TimelinePointer& pointer) = 0;
  virtual void cancel() = 0;
};

}  // namespace timeline
