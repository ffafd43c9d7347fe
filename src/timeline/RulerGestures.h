#pragma once

#include <QCoreApplication>

#include "model/StopFrame.h"
#include "timeline/TimeSnapping.h"
#include "timeline/TimelineDragStep.h"
#include "timeline/TimelineStage.h"

namespace timeline {

/// The editor time follows the pointer, frame by frame; Shift snaps it.
class ScrubGesture : public TimelineGesture {
 public:
  ScrubGesture(TimelineStage& stage, const TimelinePointer& start);
  void update(const TimelinePointer& pointer) override;
  void finish(const TimelinePointer& pointer) override;
  void cancel() override;

 private:
  TimelineStage& m_stage;
  double m_before;
  TimeSnapping m_snapping;
};

/// A time that is dragged along the ruler, in whole frames; Ctrl lets go of what it snaps to. A
/// press that does not move changes nothing.
class TimeGesture : public TimelineGesture {
 public:
  TimeGesture(TimelineStage& stage, const TimelinePointer& start, double time,
              TimeSnapping snapping);
  void update(const TimelinePointer& pointer) override;
  void finish(const TimelinePointer& pointer) override;
  void cancel() override;

 protected:
  /// The nearest time (seconds) that may be set.
  [[nodiscard]] virtual double allowed(double time) const = 0;
  /// Changes what is dragged; everything is as before the drag.
  virtual void setTime(double time) = 0;
  [[nodiscard]] virtual QString stepName() const = 0;
  virtual void clicked() {}
  [[nodiscard]] TimelineStage& stage() const { return m_stage; }

 private:
  [[nodiscard]] double timeFor(const TimelinePointer& pointer, TimelineMarks& marks) const;

  TimelineStage& m_stage;
  TimelineDragStep m_step;
  TimeSnapping m_snapping;
  double m_startX;
  double m_before;
  double m_time;
  bool m_isDragging = false;
};

/// Moves a stop frame. A click moves the editor time there.
class StopFrameGesture : public TimeGesture {
  Q_DECLARE_TR_FUNCTIONS(StopFrameGesture)

 public:
  StopFrameGesture(TimelineStage& stage, model::StopFrame& stopFrame, const TimelinePointer& start);

 protected:
  [[nodiscard]] double allowed(double time) const override;
  void setTime(double time) override;
  [[nodiscard]] QString stepName() const override { return tr("Move Stop Frame"); }
  void clicked() override;

 private:
  model::StopFrame& m_stopFrame;
};

/// Moves the end of the composition.
class DurationGesture : public TimeGesture {
  Q_DECLARE_TR_FUNCTIONS(DurationGesture)

 public:
  DurationGesture(TimelineStage& stage, const TimelinePointer& start);

 protected:
  [[nodiscard]] double allowed(double time) const override;
  void setTime(double time) override;
  [[nodiscard]] QString stepName() const override { return tr("Change Duration"); }
};

}  // namespace timeline
