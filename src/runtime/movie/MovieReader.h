#pragma once

#include <QImage>
#include <atomic>
#include <memory>

#include "foundation/Result.h"
#include "runtime/movie/MovieInfo.h"

namespace runtime::movie {

/// A picture of a movie and the ticks during which it shows.
struct MoviePicture {
  QImage image;  ///< premultiplied ARGB32
  qint64 from = 0;
  qint64 until = 0;  ///< the next picture's first tick
  [[nodiscard]] bool shows(qint64 tick) const { return from <= tick && tick < until; }
};

/// Reads any picture of a movie file exactly: the one that shows at a tick, whatever was read
/// before. Going on forwards is fast, going back costs decoding from the key frame before. Not
/// thread-safe.
class MovieReader {
 public:
  /// Opens the file and decodes its first picture. A true `stop` makes calls under way fail soon;
  /// it must outlive the reader. Fails with the file and the reason.
  [[nodiscard]] static foundation::Result<std::unique_ptr<MovieReader>> open(
      const QString& path, const MovieLimits& limits = {}, const std::atomic<bool>* stop = nullptr);
  ~MovieReader();
  MovieReader(const MovieReader&) = delete;
  MovieReader& operator=(const MovieReader&) = delete;

  [[nodiscard]] const MovieInfo& info() const { return m_info; }
  /// The picture that shows at the tick: the last one that does not begin later. The first shows
  /// before it too, the last one for ever. Pictures that are damaged are left out.
  [[nodiscard]] foundation::Result<MoviePicture> pictureAt(qint64 tick);
  /// Some of what was read so far could not be decoded.
  [[nodiscard]] bool isDamaged() const;

 private:
  struct State;
  MovieReader();
  [[nodiscard]] foundation::Result<void> moveTo(qint64 tick);
  [[nodiscard]] foundation::Result<void> jumpBefore(qint64 tick);
  [[nodiscard]] foundation::Result<void> start();
  [[nodiscard]] foundation::Result<void> step();

  std::unique_ptr<State> m_state;
  MovieInfo m_info;
};

}  // namespace runtime::movie
