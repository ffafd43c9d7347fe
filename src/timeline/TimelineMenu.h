#pragma once

#include <QCoreApplication>

#include "timeline/TimelineHost.h"

class QMenu;

namespace timeline {

class TYTimelineView;

/// What can be done with what a context menu was asked for on.
class TimelineMenu {
  Q_DECLARE_TR_FUNCTIONS(TimelineMenu)

 public:
  static void fill(QMenu& menu, TYTimelineView& view, const TimelineTarget& target);

 private:
  static void addForComponent(QMenu& menu, TYTimelineView& view, model::QuartzComponent& component);
  static void addForAttribute(QMenu& menu, TYTimelineView& view, const TimelineTarget& target);
  static void addForStopFrame(QMenu& menu, TYTimelineView& view, model::StopFrame& stopFrame);
  static void addForTime(QMenu& menu, TYTimelineView& view, double time);
};

}  // namespace timeline
