#pragma once

#include <QElapsedTimer>
#include <QMutex>
#include <QObject>
#include <thread>

#include "playout/ValueSets.h"
#include "render/RenderJob.h"
#include "render/RenderSource.h"

namespace render {

/// Renders a source into files on a thread of its own. Signals come from that thread.
class RenderTask : public QObject {
  Q_OBJECT

 public:
  enum class State { Waiting, Running, Done, Cancelled, Failed };

  struct Progress {
    qint64 frames = 0;            ///< written
    std::optional<qint64> total;  ///< expected; may be off where only the graphic says when it ends
    std::optional<double> timeLeft;  ///< seconds, once there is something to judge by
  };

  /// `values`, of the document, are set before the first frame.
  RenderTask(RenderSource source, RenderSettings settings, playout::ValueSet values = {});
  /// Cancels what is going on and waits for its end.
  ~RenderTask() override;

  /// Once.
  void start();
  /// Leaves a core to others from the next frame on.
  void setGivesWay(bool givesWay) { m_givesWay = givesWay; }
  /// Ends it soon, in the middle of a frame if need be. A movie then leaves nothing behind;
  /// pictures that are written stay.
  void cancel();
  /// Until it has ended.
  void wait();

  [[nodiscard]] const RenderSettings& settings() const { return m_settings; }
  [[nodiscard]] State state() const;
  [[nodiscard]] Progress progress() const;
  /// Why it failed.
  [[nodiscard]] foundation::Error error() const;
  /// What came up, of a task that is done.
  [[nodiscard]] QStringList findings() const;

 Q_SIGNALS:
  /// At most twenty times a second.
  void advanced();
  /// Once: done, cancelled or failed. Not of a task that never began.
  void finished();

 private:
  void run();
  [[nodiscard]] foundation::Result<void> render();
  [[nodiscard]] foundation::Result<void> setValues(runtime::CompositionRenderer& renderer) const;
  /// What is wrong with the values, said of the set and its document.
  [[nodiscard]] foundation::Error toldOfSet(foundation::Error error) const;
  void tell(qint64 frames);
  /// How many frames the graphic makes if its stops are held as the settings say.
  [[nodiscard]] std::optional<qint64> expectedFrames(const PlayableInput& input) const;

  const RenderSource m_source;
  const RenderSettings m_settings;
  const playout::ValueSet m_values;
  const std::shared_ptr<runtime::Interruption> m_interruption;
  std::atomic<bool> m_cancelled = false;
  std::atomic<bool> m_givesWay = false;
  mutable QMutex m_mutex;
  State m_state = State::Waiting;
  qint64 m_frames = 0;
  std::optional<qint64> m_total;
  QElapsedTimer m_clock;  ///< since the first frame
  qint64 m_lastTold = 0;  ///< milliseconds on it
  foundation::Error m_error;
  QStringList m_findings;
  std::thread m_thread;
};

}  // namespace render
