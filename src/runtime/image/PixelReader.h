#pragma once

#include "runtime/Image.h"
#include "runtime/image/Pixel.h"

namespace runtime::image {

/// Random access to the pixels of a part of an image, in image space.
class PixelReader {
 public:
  enum class Outside : quint8 {
    Transparent,
    Edge  ///< the nearest pixel
  };
  /// Loads the part of the image that the area needs; outside it the image reads as `outside` says.
  PixelReader(const Image& image, const QRect& area, Outside outside = Outside::Transparent)
      : m_outside(outside) {
    if (image.isNull()) return;
    m_area = image.isInfinite() ? area : area & image.extent();
    // Edge pixels are wanted even when the area lies wholly beside the image.
    if (outside == Outside::Edge && !image.isInfinite()) m_area = image.extent();
    if (!m_area.isEmpty()) m_pixels = image.pixels(m_area);
    if (m_pixels.isNull()) m_area = {};
  }

  [[nodiscard]] Pixel at(int x, int y) const {
    const int right = m_area.x() + m_area.width() - 1;
    const int top = m_area.y() + m_area.height() - 1;
    if (m_area.isEmpty()) return {};
    if (m_outside == Outside::Edge) {
      x = std::clamp(x, m_area.x(), right);
      y = std::clamp(y, m_area.y(), top);
    } else if (x < m_area.x() || y < m_area.y() || x > right || y > top) {
      return {};
    }
    return Pixel::fromRgb(
        reinterpret_cast<const QRgb*>(m_pixels.constScanLine(top - y))[x - m_area.x()]);
  }
  /// The pixel that holds the point.
  [[nodiscard]] Pixel nearest(double x, double y) const { return at(whole(x), whole(y)); }
  /// Bilinear; the centre of pixel (0, 0) is (0.5, 0.5).
  [[nodiscard]] Pixel sample(double x, double y) const {
    const int column = whole(x - 0.5);
    const int row = whole(y - 0.5);
    const auto fx = static_cast<float>(x - 0.5 - column);
    const auto fy = static_cast<float>(y - 0.5 - row);
    if (fx == 0 && fy == 0) return at(column, row);
    return mix(mix(at(column, row), at(column + 1, row), fx),
               mix(at(column, row + 1), at(column + 1, row + 1), fx), fy);
  }

 private:
  static int whole(double v) {
    return std::isnan(v) ? 0 : static_cast<int>(std::floor(std::clamp(v, -1e8, 1e8)));
  }
  QRect m_area;
  QImage m_pixels;
  Outside m_outside;
};

}  // namespace runtime::image
