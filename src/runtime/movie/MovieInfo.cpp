#include "runtime/movie/MovieInfo.h"

#include <algorithm>
#include <cmath>

namespace runtime::movie {

double MovieInfo::tolerance() const {
  constexpr double rounding = 1e-6;  // of the caller's clock
  return std::min(0.5 * tick, 0.05 / framesPerSecond()) + rounding;
}

qint64 MovieInfo::tickAt(double seconds, bool loop) const {
  constexpr double farthest = 1e9;
  double time = std::isfinite(seconds) ? std::clamp(seconds, 0.0, farthest) : 0;
  if (loop && duration > 0) {
    time -= std::floor(time / duration) * duration;
    if (duration - time <= tolerance()) time = 0;
  }
  return static_cast<qint64>(std::floor((time + tolerance()) / tick));
}

}  // namespace runtime::movie
