#pragma once

#include <QCoreApplication>

#include "timeline/RowGesture.h"
#include "timeline/TimeSnapping.h"
#include "timeline/TimelineDragStep.h"

namespace timeline {

/// Moves the selected key frames. Those that are only passed over stay; Ctrl lets go of what key
/// frames snap to.
class KeyFrameGesture : public RowGesture {
  Q_DECLARE_TR_FUNCTIONS(KeyFrameGesture)

 public:
  KeyFrameGesture(TimelineStage& stage, const TimelineHit& hit, const TimelinePointer& start);

 protected:
  void drag(const TimelinePointer& pointer) override;
  void finishDrag() override;
  void cancelDrag() override { m_step.cancel(); }

 private:
  void begin();
  void takeDelta(const TimelinePointer& pointer);
  /// Returns the smallest of the new times.
  double apply();

  TimelineDragStep m_step;
  QList<model::Attribute*> m_attributes;
  QList<double> m_times;  ///< before, each once
  int m_count = 0;
  double m_delta = 0;     ///< seconds that were asked for, since the drag began
  double m_smallest = 0;  ///< time of a selected key frame
  std::optional<TimeSnapping> m_snapping;
  TimelineMarks m_marks;
};

}  // namespace timeline
