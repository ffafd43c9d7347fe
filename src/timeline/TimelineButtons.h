#pragma once

#include "timeline/TYTimelineControlButtons.h"

class QPainter;

namespace timeline {

struct TimelineScene;

/// The two groups of buttons that are drawn in the rulers: for stop frames in the corner, for key
/// frames in the row of an attribute that the pointer is over.
class TimelineButtons {
 public:
  TimelineButtons();

  /// Pixels of the time ruler.
  void drawInCorner(QPainter& painter, const TimelineScene& scene) const;
  /// Pixels of the title column.
  void drawInRow(QPainter& painter, const TimelineScene& scene) const;
  /// True when there was a button that did something, or a group to be hit.
  [[nodiscard]] bool clickInCorner(const TimelineScene& scene, const QPointF& point) const;
  [[nodiscard]] bool clickInRow(const TimelineScene& scene, int row, const QPointF& point) const;
  /// Whether that would do something.
  [[nodiscard]] bool isInRow(const TimelineScene& scene, int row, const QPointF& point) const;
  /// What the groups look like at the editor time, in the corner and in the row under the pointer.
  [[nodiscard]] std::pair<int, int> flags(const TimelineScene& scene) const;
  [[nodiscard]] QRectF cornerRect(const TimelineScene& scene) const;
  [[nodiscard]] QRectF rowRect(const TimelineScene& scene, int row) const;

 private:
  [[nodiscard]] TYTimelineControlButtons::Action actionInRow(const TimelineScene& scene, int row,
                                                             const QPointF& point) const;
  TYTimelineControlButtons m_stopframeButtons;
  TYTimelineControlButtons m_keyframeButtons;
};

}  // namespace timeline
