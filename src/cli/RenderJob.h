#pragma once

#include "cli/FrameWriter.h"
#include "cli/InputSchedule.h"
#include "cli/PlayableInput.h"
#include "cli/RenderOptions.h"

namespace cli {

class ProgressBar;
class RenderPipeline;

/// Plays an input frame by frame, pressing its trigger and setting values when asked, and sends the
/// frames to a writer.
class RenderJob {
 public:
  /// Options and input must outlive the job.
  RenderJob(const RenderOptions& options, PlayableInput& input, InputSchedule schedule);
  /// Decides on size, rate and number of frames; fails when the call does not say enough.
  [[nodiscard]] foundation::Result<void> plan();
  /// What the writer of the planned frames must know.
  [[nodiscard]] FrameTarget target() const;
  /// Fails, too, when it is interrupted.
  [[nodiscard]] foundation::Result<void> run(FrameWriter& writer);
  /// What came up while playing.
  [[nodiscard]] const QStringList& findings() const { return m_findings; }

 private:
  /// Sets what is due and the trigger for the frame, and evaluates it.
  [[nodiscard]] runtime::DrawList play(double time);
  [[nodiscard]] bool triggerPressed(double time);
  [[nodiscard]] bool isOver();
  void preroll();
  /// Draws the frames until the end or until one cannot be written.
  void addFrames(RenderPipeline& pipeline, ProgressBar& progress);

  const RenderOptions& m_options;
  PlayableInput& m_input;
  QDateTime m_clock;  ///< at time 0
  QSize m_size;
  FrameRate m_rate;
  bool m_isInterlaced = false;
  std::optional<qint64> m_frames;  ///< nothing: until the graphic is over
  size_t m_nextTrigger = 0;
  bool m_pressed = false;
  bool m_pressAgain = false;
  InputSchedule m_schedule;
  bool m_updated = false;  ///< the frame shows values that were just set
  QStringList m_findings;
  runtime::FrameArguments m_arguments;
};

}  // namespace cli
