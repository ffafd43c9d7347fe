#pragma once

#include <QPointF>
#include <QString>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "timeline/DragDistance.h"
#include "timeline/RowSelecting.h"
#include "timeline/TimelineStage.h"

class QEvent;
class QHelpEvent;
class QMouseEvent;
class QWheelEvent;

namespace timeline {

class TYTimelineView;
struct TimelineHit;

/// The mouse on the timeline: what presses begin, what the pointer is over, wheel and pinch.
class TimelineInput {
 public:
  enum class Area { Rows, TimeRuler, Titles };

  explicit TimelineInput(TYTimelineView& view);
  ~TimelineInput();

  /// True when the event was for the timeline.
  bool handle(Area area, QEvent& event);
  [[nodiscard]] bool isInGesture() const { return m_gesture != nullptr; }
  void cancelGesture();
  /// The keys that are held have changed while something is dragged.
  void updateModifiers(Qt::KeyboardModifiers modifiers);
  [[nodiscard]] RowSelecting& selecting() { return m_selecting; }
  [[nodiscard]] DragDistance& distance() { return m_distance; }

 private:
  class Stage;
  friend class Stage;
  void press(Area area, const QMouseEvent& event);
  void pressInRows(const TimelinePointer& pointer);
  void pressInTimeRuler(const TimelinePointer& pointer, const QPointF& position);
  void pressInTitles(const TimelinePointer& pointer, const QPointF& position);
  void move(Area area, const QMouseEvent& event);
  void release(Area area, const QMouseEvent& event);
  void doubleClick(Area area, const QMouseEvent& event);
  void hover(Area area, const QMouseEvent& event);
  void leave();
  void turnWheel(Area area, QWheelEvent& event);
  bool pinch(Area area, QEvent& event);
  bool showToolTip(Area area, const QHelpEvent& event);
  void begin(std::unique_ptr<TimelineGesture> gesture);
  void autoscroll();
  [[nodiscard]] TimelinePointer pointerAt(Area area, const QPointF& position,
                                          Qt::KeyboardModifiers modifiers) const;
  [[nodiscard]] double xInRows(Area area, double x) const;

  TYTimelineView& m_view;
  RowSelecting m_selecting;
  DragDistance m_distance;
  std::unique_ptr<Stage> m_stage;
  std::unique_ptr<TimelineGesture> m_gesture;   // ends before what it works on
  std::function<void(const QPointF&)> m_click;  ///< of the buttons that were pressed
  TimelinePointer m_last;
  Area m_area = Area::Rows;
  QTimer m_autoscroll;
  QString m_hint;  ///< of what the pointer is over, or is being dragged
};

}  // namespace timeline
