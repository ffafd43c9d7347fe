#pragma once

#include <QColor>

namespace foundation {

/// A colour with straight (not premultiplied) components in 0…1, sRGB-encoded.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;

  [[nodiscard]] static Color white() { return {1, 1, 1, 1}; }
  [[nodiscard]] static Color black() { return {0, 0, 0, 1}; }
  [[nodiscard]] static Color fromQColor(const QColor& c) {
    return {c.redF(), c.greenF(), c.blueF(), c.alphaF()};
  }
  /// Components outside 0…1 (and NaN) are clamped.
  [[nodiscard]] QColor toQColor() const;

  friend bool operator==(const Color&, const Color&) = default;
};

}  // namespace foundation
