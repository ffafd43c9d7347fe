#pragma once

#include <QImage>

#include "runtime/draw/RasterBackend.h"

/// Small things that the tests of drawing share.
namespace drawing {

using foundation::Color;
using runtime::DrawList;
using runtime::QuadItem;

inline QImage canvas(int width, int height, const QColor& color = Qt::transparent) {
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  image.fill(color);
  return image;
}

inline QImage drawn(const DrawList& list, QImage target) {
  runtime::RasterBackend().draw(list, target);
  return target;
}

/// A quad over a rectangle of pixels (rows downwards, fractions allowed) of a destination.
inline QuadItem quadOver(const QRectF& pixels, const QSize& destination) {
  const double unit = 2.0 / destination.width();
  const QPointF center = pixels.center() - QPointF(destination.width(), destination.height()) / 2;
  QuadItem quad;
  quad.matrix.translate(static_cast<float>(center.x() * unit),
                        static_cast<float>(-center.y() * unit));
  quad.matrix.scale(static_cast<float>(pixels.width() * unit),
                    static_cast<float>(pixels.height() * unit));
  return quad;
}

inline QuadItem plain(const QRectF& pixels, const QSize& destination, const Color& color) {
  QuadItem quad = quadOver(pixels, destination);
  quad.color = color;
  return quad;
}

inline QuadItem textured(const QRectF& pixels, const QSize& destination, const QImage& image) {
  QuadItem quad = quadOver(pixels, destination);
  quad.image = runtime::Image::fromQImage(image);
  return quad;
}

/// Varied premultiplied pixels, half of them translucent; the same for the same seed.
inline QImage noise(int width, int height, quint32 seed = 1) {
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      seed = seed * 1664525U + 1013904223U;
      const int alpha = (seed >> 31) ? 255 : static_cast<int>((seed >> 8) & 255U);
      const QRgb straight = (seed & 0x00FFFFFFU) | (static_cast<quint32>(alpha) << 24);
      image.setPixel(x, y, qPremultiply(straight));
    }
  }
  return image;
}

inline DrawList listOf(std::vector<runtime::DrawItem> items) {
  return DrawList{std::move(items)};
}

}  // namespace drawing
