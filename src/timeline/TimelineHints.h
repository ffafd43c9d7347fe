#pragma once

#include <QCoreApplication>

#include "timeline/TimelinePicker.h"
#include "timeline/TitlePainter.h"

namespace timeline {

/// What can be done where the pointer is, for the status line.
class TimelineHints {
  Q_DECLARE_TR_FUNCTIONS(TimelineHints)

 public:
  [[nodiscard]] static QString inRows(const TimelineHit& hit);
  [[nodiscard]] static QString inTimeRuler(bool onStopFrame, bool onEnd);
  [[nodiscard]] static QString inTitles(const TimelineRow& row, TitlePainter::Part part);
};

}  // namespace timeline
