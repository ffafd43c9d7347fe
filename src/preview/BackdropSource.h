#pragma once

#include <QImage>
#include <atomic>
#include <limits>

#include "foundation/Result.h"
#include "runtime/movie/MovieReader.h"

namespace preview {

/// A file that lies behind a graphic: one picture for ever, or a movie over and over again. To be
/// used by one thread.
class BackdropSource {
 public:
  enum class Kind { Still, Movie };
  struct Shown {
    QImage image;                                            ///< premultiplied ARGB32
    double until = std::numeric_limits<double>::infinity();  ///< seconds
  };

  /// A true `stop`, which has to outlive the source, makes the reading of movies fail soon. Errors
  /// name the file and the reason.
  [[nodiscard]] static foundation::Result<BackdropSource> open(Kind kind, const QString& path,
                                                               const std::atomic<bool>& stop);
  /// What shows at the time in seconds.
  [[nodiscard]] foundation::Result<Shown> pictureAt(double seconds);

 private:
  BackdropSource() = default;

  QImage m_still;
  std::unique_ptr<runtime::movie::MovieReader> m_movie;
};

}  // namespace preview
