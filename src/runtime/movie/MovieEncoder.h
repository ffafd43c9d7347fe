#pragma once

#include <QByteArray>
#include <memory>

#include "foundation/Result.h"
#include "runtime/movie/MovieFormat.h"

namespace runtime::movie {

/// Writes a movie file. It grows under a temporary name beside its own and takes that when it is
/// finished, so an end before that leaves nothing behind.
class MovieEncoder {
 public:
  /// Fails for formats that cannot be written and files that cannot be made.
  [[nodiscard]] static foundation::Result<std::unique_ptr<MovieEncoder>> create(
      const QString& path, const MovieFormat& format);
  ~MovieEncoder();
  MovieEncoder(const MovieEncoder&) = delete;
  MovieEncoder& operator=(const MovieEncoder&) = delete;

  /// Rows of R, G, B, A bytes as what add() takes: straight alpha, for a codec without alpha
  /// colours on black. Thread-safe.
  [[nodiscard]] foundation::Result<QByteArray> convert(const uchar* rgba,
                                                       qsizetype bytesPerLine) const;
  /// Encodes the next frame.
  [[nodiscard]] foundation::Result<void> add(const QByteArray& converted);
  /// Writes what is left and gives the file its name.
  [[nodiscard]] foundation::Result<void> finish();

 private:
  struct State;
  MovieEncoder();
  std::unique_ptr<State> m_state;
};

}  // namespace runtime::movie
