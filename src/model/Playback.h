#pragma once

#include <memory>

namespace model {

class Composition;
class EditorClock;

/// Playing in the editor: the composition's editor time follows a clock, looked at once for each
/// frame of the format. A frame that comes late is skipped and those after it stand where they
/// belong, so playing does not drift. Stop frames halt graphics on air, not in the editor. Nothing
/// is scheduled while nothing plays.
class Playback {
 public:
  explicit Playback(Composition& composition);
  /// The clock must outlive the composition.
  void setClock(EditorClock& clock) { m_clock = &clock; }
  [[nodiscard]] bool isPlaying() const { return m_state == State::Playing; }
  /// On the clock: the moment at which the editor time was, or would have been, 0.
  [[nodiscard]] double startTime() const { return m_startTime; }
  void setPlaying(bool playing);
  /// The editor time was set by something else: playing goes on from there.
  void editorTimeWasSet(double timepoint);
  /// Takes the editor time from the clock. At the end of the composition playing stops at 0.
  void update();

 private:
  enum class State {
    Standing,
    Playing,
    Stopping  ///< the last update, which brings the time to a tick, is still to come
  };
  void scheduleUpdate();
  void finish(double time);

  Composition& m_composition;
  EditorClock* m_clock;
  State m_state = State::Standing;
  double m_startTime = 0;
  bool m_isUpdating = false;   ///< the editor time changes because of the clock
  bool m_wasSetSince = false;  ///< while stopping: the time is another one already
  int m_run = 0;  ///< counts the starts; updates that an earlier one scheduled are dropped
  std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

}  // namespace model
