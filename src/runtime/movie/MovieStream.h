#pragma once

#include <QElapsedTimer>
#include <atomic>

#include "runtime/movie/Ffmpeg.h"
#include "runtime/movie/MovieInfo.h"

namespace runtime::movie {

/// A decoded picture and the tick from which it shows.
struct StreamFrame {
  FramePtr frame;
  qint64 tick = 0;
};

/// The picture track of an open file: pictures in the order in which they are shown, and jumps.
/// One thread at a time.
class MovieStream {
 public:
  /// `stop` ends waiting calls from another thread; it must outlive the stream.
  [[nodiscard]] static foundation::Result<std::unique_ptr<MovieStream>> open(
      const QString& path, const MovieLimits& limits, const std::atomic<bool>& stop);

  [[nodiscard]] const MovieInfo& info() const { return m_info; }
  /// The next picture; none at the end of the movie.
  [[nodiscard]] foundation::Result<std::optional<StreamFrame>> next();
  /// Goes on with a picture that can be decoded by itself, no later than the tick as far as the
  /// container knows; its own tick tells whether that is so.
  [[nodiscard]] foundation::Result<void> jump(qint64 tick);
  [[nodiscard]] foundation::Result<void> jumpToStart();
  /// Every picture can be decoded without another one.
  [[nodiscard]] bool isIntraOnly() const;
  /// Parts could not be decoded so far.
  [[nodiscard]] bool isDamaged() const { return m_damaged; }
  /// A call is a request for one picture: bounds count from here.
  void beginRequest();

  /// For the library's callback only.
  [[nodiscard]] bool mustStop() const;

 private:
  MovieStream(QString path, const MovieLimits& limits, const std::atomic<bool>& stop)
      : m_path(std::move(path)), m_limits(limits), m_stop(stop) {}
  [[nodiscard]] foundation::Result<void> openFile();
  [[nodiscard]] foundation::Result<void> openDecoder();
  void describe();
  [[nodiscard]] foundation::Result<void> feed();
  [[nodiscard]] foundation::Result<void> checkBounds();
  [[nodiscard]] double duration();
  void noteEnd();
  [[nodiscard]] qint64 tickOf(const AVFrame& frame);
  [[nodiscard]] AVStream* track() const { return m_input->streams[m_track]; }

  QString m_path;
  MovieLimits m_limits;
  const std::atomic<bool>& m_stop;
  QElapsedTimer m_clock;
  InputPtr m_input;
  CodecPtr m_decoder;
  PacketPtr m_packet{av_packet_alloc()};
  MovieInfo m_info;
  int m_track = 0;
  qint64 m_start = AV_NOPTS_VALUE;  ///< time stamp of the first picture
  qint64 m_nextTick = 0;            ///< for a picture without a time stamp
  bool m_hasStamps = true;
  bool m_knowsLength = false;       ///< of this track, not only of the file
  std::optional<double> m_lastEnd;  ///< seconds; of the picture before
  qint64 m_packetsRead = 0;
  bool m_drained = false;
  bool m_damaged = false;
};

}  // namespace runtime::movie
