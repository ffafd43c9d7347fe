#pragma once

#include <QSize>
#include <QString>

namespace runtime::movie {

/// What a movie file says of its picture track. Places in it are ticks: the track's own unit of
/// time, counted from its first picture.
struct MovieInfo {
  QSize size;  ///< pixels
  /// Average pictures a second, as a fraction.
  qint64 rateNumerator = 25;
  qint64 rateDenominator = 1;
  qint64 frames = 1;    ///< as the length and the average say; at least 1
  double duration = 0;  ///< seconds; a whole number of pictures where they come evenly
  double tick = 0.001;  ///< seconds
  bool hasAlpha = false;
  bool isInterlaced = false;
  QString codec;  ///< the library's short name, such as "h264"

  [[nodiscard]] double framesPerSecond() const {
    return static_cast<double>(rateNumerator) / static_cast<double>(rateDenominator);
  }
  /// By so much a picture may come early, because containers round their times. Seconds.
  [[nodiscard]] double tolerance() const;
  /// The tick of a time in seconds from 0; a looping movie starts again at its end.
  [[nodiscard]] qint64 tickAt(double seconds, bool loop) const;
};

/// Bounds for files that nobody vouches for.
struct MovieLimits {
  qint64 largestPixels = 64'000'000;  ///< of one picture
  int streams = 64;
  qint64 packets = 200'000;  ///< read in search of one picture
  int seconds = 60;          ///< a single call may take; only to end what would not end
};

}  // namespace runtime::movie
