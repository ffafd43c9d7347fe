#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <optional>
#include <thread>

#include "playout/InputValues.h"
#include "preview/FrameClock.h"
#include "preview/FrameMeter.h"
#include "preview/PicturePool.h"
#include "preview/PreviewProgram.h"
#include "preview/SwitchLog.h"

namespace preview {

/// Plays a program in real time on a thread of its own. The last finished picture waits to be
/// taken; a picture that nobody took in time is replaced. What looks the same is not drawn again.
class FramePump {
 public:
  /// What the graphic says of itself, as of one frame.
  struct State {
    int run = 0;  ///< which start from the beginning; see restart()
    bool isActive = false;
    bool isWaiting = false;  ///< for its trigger
    friend bool operator==(const State&, const State&) = default;
  };
  /// What the published outputs hold, as of one frame.
  struct Outputs {
    int run = 0;
    std::vector<runtime::Value> values = {};  ///< in the order of the program's keys
  };
  /// Called on the thread, which waits for them: pass it on and return.
  struct Hooks {
    std::function<void()> pictureReady = {};  ///< once until it was taken
    /// After the first frame of a run, and after every frame in which something is different.
    std::function<void(const State&)> stateChanged = {};
    /// Published outputs differ from those before; once until they were taken.
    std::function<void()> outputsReady = {};
    /// All that loading and playing had to report so far, each time that there is more.
    std::function<void(const QStringList&)> found = {};
    /// Playing ended because frames take too long; restart() tries again.
    std::function<void(int run)> stalled = {};
  };

  /// Two frames in a row that take longer end the playing.
  static constexpr std::chrono::milliseconds mostTimeOfFrame{2000};

  FramePump(PreviewProgram program, Hooks hooks,
            std::chrono::milliseconds mostTime = mostTimeOfFrame);
  /// Ends the frame that is being made; waits for the patch that is running at the moment.
  ~FramePump();
  FramePump(const FramePump&) = delete;
  FramePump& operator=(const FramePump&) = delete;

  /// Plays from the beginning; inputs keep what they were set to but for the trigger. The number of
  /// the new run; states of earlier ones may still arrive.
  int restart();
  /// Of the same size and rate.
  [[nodiscard]] bool canGoOnWith(const PreviewProgram& program) const {
    return program.size == m_size && program.framesPerSecond == m_rate;
  }
  /// Goes on with another program that it can go on with, at the same playing time and as if it
  /// had been played from the beginning: with what was set, and switched and triggered at its time.
  void exchangeProgram(PreviewProgram program);
  /// Applies from the next frame. Of a switch that is set several times each state lasts one frame
  /// at least; of other inputs the last value counts.
  void setInput(const QString& key, const runtime::Value& value);
  /// The latest; none when it was taken already.
  [[nodiscard]] std::shared_ptr<const Picture> takePicture();
  /// The latest; nothing when they were taken already.
  [[nodiscard]] std::optional<Outputs> takeOutputs();
  [[nodiscard]] FrameMeter::Reading reading() const;

 private:
  using Input = playout::InputValue;
  class Run;
  void work();
  void play(int run);
  /// False when the run is over.
  bool waitForFrame(FrameClock& clock, bool standsStill, int run);
  [[nodiscard]] bool isCurrent(int run) const { return !m_ends && m_run == run; }
  /// Those that a host set, at the beginning of a run.
  [[nodiscard]] std::vector<Input> inputs() const;
  /// What is due in this frame, each key once.
  [[nodiscard]] std::vector<Input> takePending();
  /// The program to go on with; none while it is still the same.
  [[nodiscard]] std::shared_ptr<const PreviewProgram> takeExchanged();
  [[nodiscard]] std::shared_ptr<const runtime::Interruption> beginFrame(int run);
  void publish(std::shared_ptr<const Picture> picture);
  void publish(Outputs outputs);

  const QSize m_size;
  const double m_rate;
  const Hooks m_hooks;
  const std::chrono::milliseconds m_mostTime;
  PicturePool m_pool;
  mutable std::mutex m_mutex;  // guards what follows
  std::condition_variable m_changed;
  std::shared_ptr<const PreviewProgram> m_program;
  bool m_isExchanged = false;  ///< the run that is going on has another program yet
  std::deque<Input> m_pending;
  std::vector<Input> m_inputs;  ///< as set by the host, for the next run
  std::shared_ptr<const Picture> m_picture;
  std::optional<Outputs> m_outputs;
  std::shared_ptr<runtime::Interruption> m_running;
  FrameMeter m_meter;
  int m_run = 1;
  bool m_ends = false;
  std::thread m_thread;
};

}  // namespace preview
