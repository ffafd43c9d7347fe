#include "runtime/movie/PlaneConverter.h"

namespace runtime::movie {

namespace {
// Converters and encoders work in whole vectors; what they do past a row's end must hit nothing.
constexpr int rowAlignment = 64;
}  // namespace

PlaneConverter::PlaneConverter(const QSize& size, AVPixelFormat format, bool byField)
    : m_size(size), m_format(format), m_fields(byField ? 2 : 1) {}

ScalerPtr PlaneConverter::takeScaler() const {
  {
    const std::lock_guard lock(m_mutex);
    if (!m_scalers.empty()) {
      ScalerPtr scaler = std::move(m_scalers.back());
      m_scalers.pop_back();
      return scaler;
    }
  }
  const int height = m_size.height() / m_fields;
  ScalerPtr scaler(sws_getContext(m_size.width(), height, AV_PIX_FMT_RGBA, m_size.width(), height,
                                  m_format, scalerFlags, nullptr, nullptr, nullptr));
  if (scaler) setColorMatrix(scaler.get(), SWS_CS_ITU709, true, SWS_CS_ITU709, false);
  return scaler;
}

void PlaneConverter::place(const QByteArray& planes, AVFrame& frame) const {
  av_image_fill_arrays(frame.data, frame.linesize,
                       reinterpret_cast<const uint8_t*>(planes.constData()), m_format,
                       m_size.width(), m_size.height(), rowAlignment);
}

foundation::Result<QByteArray> PlaneConverter::convert(const uchar* rgba,
                                                       qsizetype bytesPerLine) const {
  ScalerPtr scaler = takeScaler();
  const int bytes =
      av_image_get_buffer_size(m_format, m_size.width(), m_size.height(), rowAlignment);
  if (!scaler || bytes <= 0)
    return foundation::failure(QStringLiteral("the picture cannot be converted for the movie"));
  QByteArray planes(bytes + rowAlignment, Qt::Uninitialized);
  for (int field = 0; field < m_fields; ++field) {
    uint8_t* target[4] = {};
    int strides[4] = {};
    av_image_fill_arrays(target, strides, reinterpret_cast<uint8_t*>(planes.data()), m_format,
                         m_size.width(), m_size.height(), rowAlignment);
    for (int i = 0; i < 4 && target[i]; ++i) {
      target[i] += qptrdiff{field} * strides[i];
      strides[i] *= m_fields;
    }
    const uint8_t* source[4] = {rgba + field * bytesPerLine, nullptr, nullptr, nullptr};
    const int sourceStrides[4] = {static_cast<int>(bytesPerLine) * m_fields, 0, 0, 0};
    sws_scale(scaler.get(), source, sourceStrides, 0, m_size.height() / m_fields, target, strides);
  }
  const std::lock_guard lock(m_mutex);
  m_scalers.push_back(std::move(scaler));
  return planes;
}

}  // namespace runtime::movie
