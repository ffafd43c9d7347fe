#include "runtime/movie/FrameConverter.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace runtime::movie {

namespace {

constexpr int firstHdHeight = 720;

int colorSpace(const AVFrame& frame) {
  switch (frame.colorspace) {
    case AVCOL_SPC_UNSPECIFIED:
    case AVCOL_SPC_RESERVED:
      return frame.height >= firstHdHeight ? SWS_CS_ITU709 : SWS_CS_ITU601;
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
      return SWS_CS_ITU601;
    default:
      return frame.colorspace;
  }
}

bool isFullRange(const AVFrame& frame) {
  switch (frame.format) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ444P:
      return true;
    default:
      return frame.color_range == AVCOL_RANGE_JPEG;
  }
}

/// Its fields have chroma of their own, shared by lines that are two apart.
bool hasFieldChroma(const AVFrame& frame) {
  const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
  return frame.interlaced_frame && format && format->log2_chroma_h > 0 && frame.height % 4 == 0;
}

}  // namespace

bool hasAlpha(const AVFrame& frame) {
  const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
  return format &&
         ((format->flags & AV_PIX_FMT_FLAG_ALPHA) != 0 || frame.format == AV_PIX_FMT_PAL8);
}

bool FrameConverter::prepare(const AVFrame& frame, int height) {
  const int space = colorSpace(frame);
  const bool fullRange = isFullRange(frame);
  if (m_scaler && m_width == frame.width && m_height == height && m_format == frame.format &&
      m_space == space && m_fullRange == fullRange)
    return true;
  m_scaler.reset(sws_getContext(frame.width, height, static_cast<AVPixelFormat>(frame.format),
                                frame.width, height, AV_PIX_FMT_BGRA, scalerFlags, nullptr, nullptr,
                                nullptr));
  if (!m_scaler) return false;
  setColorMatrix(m_scaler.get(), space, fullRange, space, true);
  m_width = frame.width;
  m_height = height;
  m_format = frame.format;
  m_space = space;
  m_fullRange = fullRange;
  return true;
}

foundation::Result<QImage> FrameConverter::convert(const AVFrame& frame) {
  const int fields = hasFieldChroma(frame) ? 2 : 1;
  const bool alpha = hasAlpha(frame);
  QImage image(frame.width, frame.height,
               alpha ? QImage::Format_ARGB32 : QImage::Format_ARGB32_Premultiplied);
  if (image.isNull() || !prepare(frame, frame.height / fields))
    return foundation::failure(QStringLiteral("its pictures are of a kind that cannot be shown"));
  for (int field = 0; field < fields; ++field) {
    const uint8_t* planes[4];
    int strides[4];
    for (int i = 0; i < 4; ++i) {
      planes[i] = frame.data[i];
      strides[i] = frame.linesize[i];
      // A palette is no rows.
      if (fields == 1 || !planes[i]) continue;
      planes[i] += qptrdiff{field} * strides[i];
      strides[i] *= 2;
    }
    uint8_t* target[4] = {image.bits() + field * image.bytesPerLine(), nullptr, nullptr, nullptr};
    const int targetStrides[4] = {static_cast<int>(image.bytesPerLine()) * fields, 0, 0, 0};
    sws_scale(m_scaler.get(), planes, strides, 0, frame.height / fields, target, targetStrides);
  }
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  return image;
}

}  // namespace runtime::movie
