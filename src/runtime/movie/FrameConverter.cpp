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

/// YUV with a chroma sample for every pixel.
bool hasWholeChroma(const AVFrame& frame) {
  const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
  return format && format->nb_components >= 3 && format->log2_chroma_w == 0 &&
         format->log2_chroma_h == 0 && (format->flags & AV_PIX_FMT_FLAG_RGB) == 0;
}

/// Joins straight planes to premultiplied pixels; no alpha is opaque.
void packRow(const uchar* red, const uchar* green, const uchar* blue, const uchar* alpha, int width,
             QRgb* pixels) {
  if (!alpha) {
    for (int x = 0; x < width; ++x) pixels[x] = qRgb(red[x], green[x], blue[x]);
    return;
  }
  const auto times = [](uint component, uint a) {
    const uint product = component * a + 128;
    return (product + (product >> 8)) >> 8;
  };
  for (int x = 0; x < width; ++x) {
    const uint a = alpha[x];
    pixels[x] =
        (a << 24) | (times(red[x], a) << 16) | (times(green[x], a) << 8) | times(blue[x], a);
  }
}

}  // namespace

bool hasAlpha(const AVFrame& frame) {
  const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
  return format &&
         ((format->flags & AV_PIX_FMT_FLAG_ALPHA) != 0 || frame.format == AV_PIX_FMT_PAL8);
}

bool FrameConverter::prepare(const AVFrame& frame, AVPixelFormat target, int height) {
  const int space = colorSpace(frame);
  const bool fullRange = isFullRange(frame);
  if (m_scaler && m_width == frame.width && m_height == height && m_format == frame.format &&
      m_target == target && m_space == space && m_fullRange == fullRange)
    return true;
  // Interpolating the chroma between pixels takes six times as long and is hardly seen.
  const int flags = target == AV_PIX_FMT_BGRA ? scalerFlags & ~SWS_FULL_CHR_H_INT : scalerFlags;
  m_scaler.reset(sws_getContext(frame.width, height, static_cast<AVPixelFormat>(frame.format),
                                frame.width, height, target, flags, nullptr, nullptr, nullptr));
  if (!m_scaler) return false;
  setColorMatrix(m_scaler.get(), space, fullRange, space, true);
  m_width = frame.width;
  m_height = height;
  m_format = frame.format;
  m_target = target;
  m_space = space;
  m_fullRange = fullRange;
  return true;
}

foundation::Result<QImage> FrameConverter::convert(const AVFrame& frame) {
  const bool planes = hasWholeChroma(frame);
  const bool isStraight = !planes && hasAlpha(frame);
  QImage image(frame.width, frame.height,
               isStraight ? QImage::Format_ARGB32 : QImage::Format_ARGB32_Premultiplied);
  if (image.isNull() || !(planes ? throughPlanes(frame, image) : toPacked(frame, image)))
    return foundation::failure(QStringLiteral("its pictures are of a kind that cannot be shown"));
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  return image;
}

bool FrameConverter::toPacked(const AVFrame& frame, QImage& image) {
  const int fields = hasFieldChroma(frame) ? 2 : 1;
  if (!prepare(frame, AV_PIX_FMT_BGRA, frame.height / fields)) return false;
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
  return true;
}

/// The library is four times as fast at planes as at whole pixels when chroma is not shared.
bool FrameConverter::throughPlanes(const AVFrame& frame, QImage& image) {
  constexpr int alignment = 64;
  const bool alpha = hasAlpha(frame);
  const AVPixelFormat format = alpha ? AV_PIX_FMT_GBRAP : AV_PIX_FMT_GBRP;
  const int bytes = av_image_get_buffer_size(format, frame.width, frame.height, alignment);
  if (bytes <= 0 || !prepare(frame, format, frame.height)) return false;
  m_planes.resize(static_cast<size_t>(bytes) + alignment);
  uint8_t* planes[4] = {};
  int strides[4] = {};
  av_image_fill_arrays(planes, strides, m_planes.data(), format, frame.width, frame.height,
                       alignment);
  sws_scale(m_scaler.get(), frame.data, frame.linesize, 0, frame.height, planes, strides);
  for (int y = 0; y < frame.height; ++y) {
    const auto row = [&](int plane) { return planes[plane] + qptrdiff{y} * strides[plane]; };
    packRow(row(2), row(0), row(1), alpha ? row(3) : nullptr, frame.width,
            reinterpret_cast<QRgb*>(image.scanLine(y)));
  }
  return true;
}

}  // namespace runtime::movie
