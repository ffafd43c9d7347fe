#pragma once

#include <QCoreApplication>

#include "timeline/TimelineHost.h"

class QContextMenuEvent;
class QMenu;

namespace timeline {

class TYTimelineView;
struct TimelineScene;

/// What can be done with what a context menu was asked for on.
class TimelineMenu {
  Q_DECLARE_TR_FUNCTIONS(TimelineMenu)

 public:
  /// What lies at a point of the view.
  [[nodiscard]] static TimelineTarget targetAt(const TimelineScene& scene, const QPoint& point);
  /// What the keyboard is on.
  [[nodiscard]] static TimelineTarget currentTarget(const TimelineScene& scene);
  /// Selects what is meant and opens its menu, with what the window adds to it.
  static void popUp(TYTimelineView& view, const QContextMenuEvent& event);

  static void fill(QMenu& menu, TYTimelineView& view, const TimelineTarget& target);

 private:
  static void addForComponent(QMenu& menu, TYTimelineView& view, model::QuartzComponent& component);
  static void addForAttribute(QMenu& menu, TYTimelineView& view, const TimelineTarget& target);
  static void addForStopFrame(QMenu& menu, TYTimelineView& view, model::StopFrame& stopFrame);
  static void addForTime(QMenu& menu, TYTimelineView& view, double time);
};

}  // namespace timeline
