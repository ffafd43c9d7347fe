#pragma once

#include <QList>

#include "timeline/TimelinePicker.h"
#include "timeline/TimelineStage.h"

namespace timeline {

/// What was selected when something began, to be brought back.
class SelectionMemory {
 public:
  explicit SelectionMemory(model::Composition& composition);
  void restore() const;
  [[nodiscard]] const QList<KeyFrameReference>& keyFrames() const { return m_keyFrames; }

 private:
  model::Composition& m_composition;
  QList<model::QuartzComponent*> m_components;
  QList<KeyFrameReference> m_keyFrames;
};

/// What pressing in the rows begins. The press selects when the pointer begins to move, or when it
/// is let go without; a few pixels are no movement yet.
class RowGesture : public TimelineGesture {
 public:
  RowGesture(TimelineStage& stage, TimelineHit hit, const TimelinePointer& start);
  void update(const TimelinePointer& pointer) override;
  void finish(const TimelinePointer& pointer) override;
  void cancel() override;

  static constexpr double deadZone = 3;

 protected:
  virtual void drag(const TimelinePointer& pointer) = 0;
  virtual void finishDrag() {}
  virtual void cancelDrag() {}
  /// Where the pointer is and was; x of the row space.
  [[nodiscard]] double takeMovement(const TimelinePointer& pointer);

  [[nodiscard]] TimelineStage& stage() const { return m_stage; }
  [[nodiscard]] const TimelineHit& hit() const { return m_hit; }
  [[nodiscard]] const TimelinePointer& start() const { return m_start; }
  [[nodiscard]] const SelectionMemory& memory() const { return m_memory; }

 private:
  /// True at the first call; then the press has its effect.
  bool dragCheckFirstEvent(Qt::KeyboardModifiers modifiers);

  TimelineStage& m_stage;
  TimelineHit m_hit;
  TimelinePointer m_start;
  SelectionMemory m_memory;
  double m_distanceBefore;
  double m_lastX;
  bool m_draggingFirstEvent = true;
  bool m_isDragging = false;
};

}  // namespace timeline
