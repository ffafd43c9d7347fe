#pragma once

#include <QCoreApplication>
#include <optional>

#include "timeline/TimelinePicker.h"

class QKeyEvent;

namespace model {
class StopFrame;
}

namespace timeline {

class TYTimelineView;
struct TimelineRow;

/// The timeline without a mouse. Up and Down walk the rows, the row above all being the time ruler
/// with its stop frames; Alt and Left or Right walk the key frames of a row; Ctrl and Left or Right
/// move what is selected by a frame, with Shift by ten; Alt and Up or Down change the order; the
/// brackets put start and end at the editor time, in the time ruler the end of the composition;
/// Return edits, F2 renames, plus and minus open and close, Delete removes a stop frame.
class TimelineKeyboard {
  Q_DECLARE_TR_FUNCTIONS(TimelineKeyboard)

 public:
  explicit TimelineKeyboard(TYTimelineView& view) : m_view(view) {}

  /// Whether the key is for the timeline even where a command of the window has it.
  [[nodiscard]] bool claims(const QKeyEvent& event) const;
  /// True when the key did something.
  bool press(const QKeyEvent& event);

  /// The stop frame that the keyboard is on, if any.
  [[nodiscard]] model::StopFrame* currentStopFrame() const;
  /// What is read out of the place the keyboard is on.
  [[nodiscard]] QString description() const;

 private:
  [[nodiscard]] int rowsOfAPage() const;
  void moveRow(int step, bool extends);
  void walk(int step, bool adds);
  void moveByFrames(int frames);
  void arrange(int step);
  [[nodiscard]] bool removeStopFrame();
  void moveEdge(TimelineHit::Part part);
  void moveComponents(int frames);
  void moveKeyFrames(int frames);
  void edit();
  [[nodiscard]] TimelineRow row() const;
  void announce();

  TYTimelineView& m_view;
};

}  // namespace timeline
