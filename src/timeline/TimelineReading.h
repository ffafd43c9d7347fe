#pragma once

#include <QCoreApplication>

#include "foundation/Timecode.h"
#include "timeline/KeyFrameSelection.h"
#include "timeline/TimelineRows.h"

namespace model {
class StopFrame;
}

namespace timeline {

/// Rows, key frames and stop frames in words, for people who hear the window.
class TimelineReading {
  Q_DECLARE_TR_FUNCTIONS(TimelineReading)

 public:
  using Rate = foundation::TimecodeRate;
  [[nodiscard]] static QString time(double seconds, const Rate& rate);
  [[nodiscard]] static QString row(const TimelineRow& row, const Rate& rate);
  [[nodiscard]] static QString keyFrame(const KeyFrameReference& keyFrame, const Rate& rate);
  [[nodiscard]] static QString stopFrame(const model::StopFrame& stopFrame, const Rate& rate);
};

}  // namespace timeline
