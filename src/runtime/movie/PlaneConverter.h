#pragma once

#include <QImage>
#include <mutex>
#include <vector>

#include "runtime/movie/Ffmpeg.h"

namespace runtime::movie {

/// Turns rows of RGBA into an encoder's planes: BT.709, limited range. Thread-safe, so that
/// pictures can be converted while others are being encoded.
class PlaneConverter {
 public:
  /// With `byField` the chroma of each field is its own.
  PlaneConverter(const QSize& size, AVPixelFormat format, bool byField);

  /// The planes one after the other, as place() knows them. `rgba` holds R, G, B, A bytes.
  [[nodiscard]] foundation::Result<QByteArray> convert(const uchar* rgba,
                                                       qsizetype bytesPerLine) const;
  /// Points the frame's planes into bytes that convert() made.
  void place(const QByteArray& planes, AVFrame& frame) const;

 private:
  [[nodiscard]] ScalerPtr takeScaler() const;

  QSize m_size;
  AVPixelFormat m_format;
  int m_fields;
  mutable std::mutex m_mutex;
  mutable std::vector<ScalerPtr> m_scalers;
};

}  // namespace runtime::movie
