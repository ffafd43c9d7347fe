#include "render/PixelFormat.h"

#include <array>

namespace render {

namespace {

/// 2^16 · 255 / alpha, so that a component times it, shifted, is the straight component.
const std::array<quint32, 256>& reciprocals() {
  static const std::array<quint32, 256> table = [] {
    std::array<quint32, 256> t{};
    for (quint32 a = 1; a < 256; ++a) t[a] = (255U * 65536U + a / 2) / a;
    return t;
  }();
  return table;
}

quint32 swapped(quint32 argb) {
  return (argb & 0xff00ff00U) | ((argb >> 16) & 0xffU) | ((argb & 0xffU) << 16);
}

quint32 straight(quint32 argb, const std::array<quint32, 256>& table) {
  const quint32 a = argb >> 24;
  const quint32 scale = table[a];
  const auto component = [scale](quint32 c) {
    return std::min<quint32>((c * scale + 0x8000U) >> 16, 255U);
  };
  return (a << 24) | (component(argb & 0xffU) << 16) | (component((argb >> 8) & 0xffU) << 8) |
         component((argb >> 16) & 0xffU);
}

void convertRow(quint32* row, int width, Alpha alpha) {
  const auto& table = reciprocals();
  if (alpha == Alpha::Premultiplied) {
    for (int x = 0; x < width; ++x) row[x] = swapped(row[x]);
    return;
  }
  constexpr int block = 16;
  int x = 0;
  for (; x + block <= width; x += block) {
    quint32 all = 0xffffffffU;
    quint32 any = 0;
    for (int i = 0; i < block; ++i) {
      all &= row[x + i];
      any |= row[x + i];
    }
    if (any == 0) continue;
    if (all >= 0xff000000U) {
      for (int i = 0; i < block; ++i) row[x + i] = swapped(row[x + i]);
    } else {
      for (int i = 0; i < block; ++i) row[x + i] = straight(row[x + i], table);
    }
  }
  for (; x < width; ++x) row[x] = straight(row[x], table);
}

}  // namespace

void convertToRgba(QImage& image, Alpha alpha, const QRect& area) {
  static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN);
  const QRect inside = area & image.rect();
  for (int y = inside.top(); y <= inside.bottom(); ++y)
    convertRow(reinterpret_cast<quint32*>(image.scanLine(y)) + inside.left(), inside.width(),
               alpha);
}

}  // namespace render
