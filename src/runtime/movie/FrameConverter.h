#pragma once

#include <QImage>

#include "runtime/movie/Ffmpeg.h"

namespace runtime::movie {

/// Turns decoded pictures into premultiplied ARGB32, by the matrix and range that they are tagged
/// with; untagged ones count as BT.709 from 720 lines on and as BT.601 below. Files hold straight
/// alpha.
class FrameConverter {
 public:
  [[nodiscard]] foundation::Result<QImage> convert(const AVFrame& frame);

 private:
  [[nodiscard]] bool prepare(const AVFrame& frame, AVPixelFormat target, int height);
  [[nodiscard]] bool toPacked(const AVFrame& frame, QImage& image);
  [[nodiscard]] bool throughPlanes(const AVFrame& frame, QImage& image);
  ScalerPtr m_scaler;
  int m_width = 0;
  int m_height = 0;
  int m_format = -1;
  AVPixelFormat m_target = AV_PIX_FMT_NONE;
  int m_space = -1;
  bool m_fullRange = false;
  std::vector<uchar> m_planes;
};

/// The picture has an alpha channel.
[[nodiscard]] bool hasAlpha(const AVFrame& frame);

}  // namespace runtime::movie
