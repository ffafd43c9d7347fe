#pragma once

#include <QImage>

namespace runtime {

/// Direct access to the pixels of a premultiplied 32-bit image, which must outlive it.
class PixelRows {
 public:
  explicit PixelRows(QImage& image)
      : m_first(image.bits()), m_stride(image.bytesPerLine()), m_size(image.size()) {}
  [[nodiscard]] QRgb* row(int y) const { return reinterpret_cast<QRgb*>(m_first + y * m_stride); }
  [[nodiscard]] QSize size() const { return m_size; }
  /// The same pixels as an image; painting on it never copies them.
  [[nodiscard]] QImage asImage() const {
    return {m_first, m_size.width(), m_size.height(), m_stride,
            QImage::Format_ARGB32_Premultiplied};
  }

 private:
  uchar* m_first;
  qsizetype m_stride;
  QSize m_size;
};

}  // namespace runtime
