#pragma once

#include <QMutex>
#include <QWaitCondition>
#include <deque>
#include <thread>

#include "runtime/movie/MovieReader.h"

namespace runtime::movie {

/// Plays a movie: pictures by time, decoded ahead on a thread of its own. What a time shows does
/// not depend on what was asked for before; a picture that is not ready is waited for. To be asked
/// by one thread at a time.
class MoviePlayer {
 public:
  /// Fails like MovieReader::open.
  [[nodiscard]] static foundation::Result<std::unique_ptr<MoviePlayer>> open(
      const QString& path, const MovieLimits& limits = {});
  ~MoviePlayer();
  MoviePlayer(const MoviePlayer&) = delete;
  MoviePlayer& operator=(const MoviePlayer&) = delete;

  [[nodiscard]] const MovieInfo& info() const { return m_info; }
  /// The picture at the time in seconds. Past the end a looping movie starts again and another one
  /// stands still.
  [[nodiscard]] foundation::Result<MoviePicture> pictureAt(double seconds, bool loop);
  [[nodiscard]] bool isDamaged() const { return m_damaged; }

  /// Pictures that wait to be asked for: at most so many, and so many bytes unless that is one.
  static constexpr size_t mostPictures = 8;
  static constexpr qint64 mostBytes = 128 << 20;

 private:
  MoviePlayer() = default;
  void decodeAhead();
  [[nodiscard]] const MoviePicture* pictureShowing(qint64 tick) const;
  void noteRequest(double seconds, bool loop);
  [[nodiscard]] std::optional<qint64> nextTick() const;
  [[nodiscard]] bool hasRoom() const;

  MovieInfo m_info;
  std::unique_ptr<MovieReader> m_reader;  ///< the thread's, once that runs
  std::atomic<bool> m_stop = false;
  std::atomic<bool> m_damaged = false;
  QMutex m_mutex;
  QWaitCondition m_changed;
  std::deque<MoviePicture> m_pictures;  ///< in the order in which they are expected to be shown
  std::optional<qint64> m_wanted;       ///< somebody waits for the picture of this tick
  std::optional<foundation::Error> m_error;  ///< of the last picture that was waited for
  double m_lastTime = 0;
  double m_step = 0;  ///< seconds from one request to the next
  bool m_loop = false;
  bool m_isIdle = false;  ///< decoding ahead failed: nothing to do until somebody asks
  std::thread m_thread;
};

}  // namespace runtime::movie
