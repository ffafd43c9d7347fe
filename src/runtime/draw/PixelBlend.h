#pragma once

#include <QRgb>
#include <algorithm>
#include <array>

#include "foundation/Color.h"
#include "runtime/draw/DrawList.h"

/// The arithmetic of blending on premultiplied 8-bit pixels.
namespace runtime {

/// a · b / 255, rounded.
[[nodiscard]] inline int scaled(int a, int b) {
  const int t = a * b + 128;
  return (t + (t >> 8)) >> 8;
}

/// Straight components (within 0…1) as a premultiplied pixel.
[[nodiscard]] inline QRgb premultipliedPixel(const foundation::Color& c) {
  const auto level = [&c](double v) { return static_cast<int>(v * c.alpha * 255 + 0.5); };
  return qRgba(level(c.red), level(c.green), level(c.blue), level(1));
}

/// The channels that a colour mask lets through, as bits of a pixel.
[[nodiscard]] inline QRgb writtenBits(quint8 colorMask) {
  return ((colorMask & 1) ? 0x00FF0000U : 0U) | ((colorMask & 2) ? 0x0000FF00U : 0U) |
         ((colorMask & 4) ? 0x000000FFU : 0U) | ((colorMask & 8) ? 0xFF000000U : 0U);
}

/// What is in the destination after the source was drawn on it, both premultiplied.
[[nodiscard]] inline QRgb blended(QRgb destination, QRgb source, Blending blending) {
  if (blending == Blending::Replace) return source;
  const int alpha = qAlpha(source);
  const int rest = blending == Blending::Add ? 255 : 255 - alpha;
  const int weight = blending == Blending::Alpha ? alpha : 255;
  if (rest == 0 && weight == 255) return source;
  const auto one = [rest, weight](int d, int s) {
    return std::min(255, scaled(s, weight) + scaled(d, rest));
  };
  return qRgba(one(qRed(destination), qRed(source)), one(qGreen(destination), qGreen(source)),
               one(qBlue(destination), qBlue(source)), one(qAlpha(destination), qAlpha(source)));
}

/// blended() with Blending::Over, for a source none of whose channels exceeds its alpha: two channels
/// at a time, as no carry reaches the neighbour.
[[nodiscard]] inline QRgb blendedOver(QRgb destination, QRgb source) {
  const quint32 rest = 255 - (source >> 24);
  quint32 low = (destination & 0x00FF00FFU) * rest + 0x00800080U;
  quint32 high = ((destination >> 8) & 0x00FF00FFU) * rest + 0x00800080U;
  low = (low + ((low >> 8) & 0x00FF00FFU)) >> 8;
  high += (high >> 8) & 0x00FF00FFU;
  return source + ((low & 0x00FF00FFU) | (high & 0xFF00FF00U));
}

/// Between two pixels; weight 0…256, where 256 is all of b.
[[nodiscard]] inline QRgb mixed(QRgb a, QRgb b, int weight) {
  // Two channels at a time: sixteen bits each, no carry reaches the neighbour.
  const auto w = static_cast<quint32>(weight);
  const quint32 low = ((a & 0x00FF00FFU) * (256 - w) + (b & 0x00FF00FFU) * w + 0x00800080U) >> 8;
  const quint32 high =
      ((a >> 8) & 0x00FF00FFU) * (256 - w) + ((b >> 8) & 0x00FF00FFU) * w + 0x00800080U;
  return (low & 0x00FF00FFU) | (high & 0xFF00FF00U);
}

/// Draws the source on a part of the pixel; coverage 0…256.
inline void blendOnto(QRgb& destination, QRgb source, Blending blending, QRgb bits, int coverage) {
  QRgb result = blended(destination, source, blending);
  if (coverage < 256) result = mixed(destination, result, coverage);
  destination = (result & bits) | (destination & ~bits);
}

}  // namespace runtime
