#pragma once

#include <QImage>
#include <cmath>

#include "runtime/draw/PixelBlend.h"

namespace runtime {

/// Samples a bitmap bilinearly. Coordinates are normalised, origin lower left.
class Texture {
 public:
  Texture() = default;
  Texture(QImage bitmap, bool repeats) : m_bitmap(std::move(bitmap)), m_repeats(repeats) {}

  [[nodiscard]] bool isNull() const { return m_bitmap.isNull(); }
  [[nodiscard]] QSize size() const { return m_bitmap.size(); }

  [[nodiscard]] QRgb at(double s, double t) const {
    const int width = m_bitmap.width();
    const int height = m_bitmap.height();
    // 24.8 fixed point; positions are those of pixel centres.
    const qint64 x = fixed(s * width - 0.5, width);
    const qint64 y = fixed((1 - t) * height - 0.5, height);
    const int x0 = index(x >> 8, width);
    const int x1 = index((x >> 8) + 1, width);
    const auto* upper = row(index(y >> 8, height));
    const auto* lower = row(index((y >> 8) + 1, height));
    const int wx = static_cast<int>(x & 255);
    return mixed(mixed(upper[x0], upper[x1], wx), mixed(lower[x0], lower[x1], wx),
                 static_cast<int>(y & 255));
  }

 private:
  /// Far outside only the edge is seen (or, repeating, anything): keep clear of overflow.
  static qint64 fixed(double position, int size) {
    const double limit = 4096.0 * size;
    return std::isfinite(position) ? std::llround(std::clamp(position, -limit, limit) * 256) : 0;
  }
  [[nodiscard]] int index(qint64 i, int size) const {
    if (i >= 0 && i < size) return static_cast<int>(i);
    if (!m_repeats) return i < 0 ? 0 : size - 1;
    const qint64 rest = i % size;
    return static_cast<int>(rest < 0 ? rest + size : rest);
  }
  [[nodiscard]] const QRgb* row(int y) const {
    return reinterpret_cast<const QRgb*>(m_bitmap.constScanLine(y));
  }

  QImage m_bitmap;
  bool m_repeats = false;
};

}  // namespace runtime
