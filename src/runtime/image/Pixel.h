#pragma once

#include <QImage>
#include <QRect>
#include <algorithm>
#include <cmath>

#include "foundation/Color.h"

namespace runtime::image {

/// One pixel with components of 0…1; premultiplied unless a function says straight.
struct Pixel {
  float r = 0;
  float g = 0;
  float b = 0;
  float a = 0;

  [[nodiscard]] static Pixel fromRgb(QRgb c) {
    constexpr float k = 1.0F / 255;
    return {static_cast<float>(qRed(c)) * k, static_cast<float>(qGreen(c)) * k,
            static_cast<float>(qBlue(c)) * k, static_cast<float>(qAlpha(c)) * k};
  }
  [[nodiscard]] static Pixel fromColor(const foundation::Color& c) {
    const auto a = static_cast<float>(c.alpha);
    return {static_cast<float>(c.red) * a, static_cast<float>(c.green) * a,
            static_cast<float>(c.blue) * a, a};
  }
  /// Rounded and clamped; colour never exceeds alpha, which the painter relies on.
  [[nodiscard]] QRgb toRgb() const {
    const int alpha = byte(a);
    return qRgba(std::min(byte(r), alpha), std::min(byte(g), alpha), std::min(byte(b), alpha),
                 alpha);
  }
  /// Straight components; transparent black stays that.
  [[nodiscard]] Pixel straight() const {
    if (a <= 0) return {};
    const float k = 1 / a;
    return {r * k, g * k, b * k, a};
  }
  [[nodiscard]] Pixel premultiplied() const { return {r * a, g * a, b * a, a}; }
  /// Rec. 709 weights on whatever the components are.
  [[nodiscard]] float luminance() const { return 0.2126F * r + 0.7152F * g + 0.0722F * b; }
  [[nodiscard]] Pixel clamped() const {
    const auto unit = [](float v) { return std::clamp(v, 0.0F, 1.0F); };
    return {unit(r), unit(g), unit(b), unit(a)};
  }

  friend Pixel operator+(Pixel p, Pixel q) { return {p.r + q.r, p.g + q.g, p.b + q.b, p.a + q.a}; }
  friend Pixel operator-(Pixel p, Pixel q) { return {p.r - q.r, p.g - q.g, p.b - q.b, p.a - q.a}; }
  friend Pixel operator*(Pixel p, Pixel q) { return {p.r * q.r, p.g * q.g, p.b * q.b, p.a * q.a}; }
  friend Pixel operator*(Pixel p, float k) { return {p.r * k, p.g * k, p.b * k, p.a * k}; }
  Pixel& operator+=(Pixel q) { return *this = *this + q; }

 private:
  static int byte(float v) {
    return v > 0 ? static_cast<int>(std::min(v, 1.0F) * 255 + 0.5F) : 0;  // NaN gives 0
  }
};

[[nodiscard]] inline Pixel mix(Pixel p, Pixel q, float t) {
  return p * (1 - t) + q * t;
}

/// 0 below `low`, 1 above `high`, smooth between.
[[nodiscard]] inline float smoothStep(float low, float high, float v) {
  if (high == low) return v < low ? 0.0F : 1.0F;
  const float t = std::clamp((v - low) / (high - low), 0.0F, 1.0F);
  return t * t * (3 - 2 * t);
}

/// Calls f(x, y) with the centre of each pixel of the area (image space, y up) and stores the
/// premultiplied pixels that it returns, first row on top.
template <typename F>
[[nodiscard]] QImage paintArea(const QRect& area, const F& f) {
  QImage out(area.size(), QImage::Format_ARGB32_Premultiplied);
  if (out.isNull()) return out;
  for (int row = 0; row < area.height(); ++row) {
    auto* line = reinterpret_cast<QRgb*>(out.scanLine(row));
    const double y = area.y() + area.height() - 1 - row + 0.5;
    for (int column = 0; column < area.width(); ++column)
      line[column] = f(area.x() + column + 0.5, y).toRgb();
  }
  return out;
}

/// Replaces each premultiplied pixel p by f(p).
template <typename F>
[[nodiscard]] QImage mapPixels(QImage image, const F& f) {
  for (int row = 0; row < image.height(); ++row) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
    for (int column = 0; column < image.width(); ++column)
      line[column] = f(Pixel::fromRgb(line[column])).toRgb();
  }
  return image;
}

}  // namespace runtime::image
