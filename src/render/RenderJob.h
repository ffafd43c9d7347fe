#pragma once

#include <functional>

#include "render/FrameWriter.h"
#include "render/PlayableInput.h"
#include "render/RenderSettings.h"
#include "render/ValueSchedule.h"

namespace render {

class RenderPipeline;

/// Plays an input frame by frame, pressing its trigger and setting values when asked, and sends the
/// frames to a writer.
class RenderJob {
 public:
  /// What joins the job to its caller while it runs, on the thread that runs it; all may be empty.
  struct Watch {
    std::function<void(qint64 delivered)> progress = {};
    std::function<bool()> isCancelled = {};
    std::shared_ptr<const runtime::Interruption> interruption = {};  ///< ends a frame that goes on
    /// Asked before each frame: someone plays a graphic meanwhile, who needs a core.
    std::function<bool()> givesWay = {};
    bool isInBackground = false;  ///< others go first
  };

  /// Settings and input must outlive the job.
  RenderJob(const RenderSettings& settings, PlayableInput& input, ValueSchedule schedule);
  /// Decides on size, rate and number of frames; fails when the call does not say enough.
  [[nodiscard]] foundation::Result<void> plan();
  /// What the writer of the planned frames must know.
  [[nodiscard]] FrameTarget target() const;
  /// How many frames are planned; nothing where only the graphic says when it is over.
  [[nodiscard]] std::optional<qint64> frames() const { return m_frames; }
  /// Fails, too, when it is cancelled.
  [[nodiscard]] foundation::Result<void> run(FrameWriter& writer, Watch watch);
  /// What came up while playing.
  [[nodiscard]] const QStringList& findings() const { return m_findings; }

 private:
  /// Sets what is due and the trigger for the frame, and evaluates it.
  [[nodiscard]] runtime::DrawList play(double time);
  [[nodiscard]] bool triggerPressed(double time);
  /// Whether the stop that is waited at, if any, has stood long enough.
  [[nodiscard]] bool hasHeld(double time);
  [[nodiscard]] bool isOver();
  [[nodiscard]] bool isCancelled() const { return m_watch.isCancelled && m_watch.isCancelled(); }
  void preroll();
  /// Draws the frames until the end or until one cannot be written.
  void addFrames(RenderPipeline& pipeline);

  const RenderSettings& m_settings;
  PlayableInput& m_input;
  QDateTime m_clock;  ///< at time 0
  QSize m_size;
  FrameRate m_rate;
  bool m_isInterlaced = false;
  std::optional<qint64> m_frames;  ///< nothing: until the graphic is over
  size_t m_nextTrigger = 0;
  bool m_pressed = false;
  std::optional<double> m_waitingSince;  ///< seconds; none: no stop is waited at
  bool m_pressAgain = false;
  ValueSchedule m_schedule;
  Watch m_watch;
  bool m_updated = false;  ///< the frame shows values that were just set
  QStringList m_findings;
  runtime::FrameArguments m_arguments;
};

}  // namespace render
