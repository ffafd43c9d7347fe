#pragma once

#include <QElapsedTimer>
#include <QJsonObject>
#include <QMutex>
#include <QObject>
#include <thread>

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

  /// `values` are set before the first frame; names of files in them start at the folder.
  RenderTask(RenderSource source, RenderSettings settings, QJsonObject values = {},
             QString valuesFolder = {});
  /// Cancels what is going on and waits for its end.
  ~RenderTask() override;

  /// Once.
  void start();
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
  void tell(qint64 frames);
  /// How many frames the graphic makes if its stops are held as the settings say.
  [[nodiscard]] std::optional<qint64> expectedFrames(const PlayableInput& input) const;

  const RenderSource m_source;
  const RenderSettings m_settings;
  const QJsonObject m_values;
  const QString m_valuesFolder;
  const std::shared_ptr<runtime::Interruption> m_interruption;
  std::atomic<bool> m_cancelled = false;
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
