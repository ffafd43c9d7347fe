#pragma once

#include <QList>
#include <QPoint>
#include <QString>

class QMenu;

namespace model {
class Attribute;
class QuartzComponent;
class StopFrame;
struct CommandReport;
}  // namespace model

namespace timeline {

/// What lies under the pointer where a context menu is asked for. All may be missing.
struct TimelineTarget {
  model::QuartzComponent* component = nullptr;
  model::Attribute* attribute = nullptr;
  model::StopFrame* stopFrame = nullptr;
  bool isKeyFrame = false;  ///< then `time` is that of the attribute's key frame
  double time = 0;          ///< seconds
};

/// What the timeline needs of the window around it. By default nothing is shown.
class TimelineHost {
 public:
  virtual ~TimelineHost() = default;
  TimelineHost() = default;
  TimelineHost(const TimelineHost&) = delete;
  TimelineHost& operator=(const TimelineHost&) = delete;

  /// Tells the user, without waiting for an answer.
  virtual void showReport(const model::CommandReport&) {}
  /// What can be done next, for the status line; empty: nothing in particular.
  virtual void showHint(const QString&) {}
  /// Adds the window's commands (cut, copy, arrange and so on) below those of the timeline.
  virtual void fillContextMenu(QMenu&, const TimelineTarget&) {}
};

}  // namespace timeline
