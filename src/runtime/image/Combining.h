#pragma once

#include "runtime/image/ComputedImage.h"
#include "runtime/image/Pixel.h"

namespace runtime::image {

/// What two combined images cover.
enum class Coverage : quint8 { Union, Intersection, First, Second };

/// Each pixel becomes f(pixel of the first, pixel of the second), all premultiplied; a missing
/// image counts as transparent.
template <typename F>
[[nodiscard]] QImage combinedPixels(const Image& first, const Image& second, const QRect& area,
                                    const F& f) {
  QImage out = first.pixels(area);
  if (out.isNull()) {
    out = QImage(area.size(), QImage::Format_ARGB32_Premultiplied);
    if (out.isNull()) return out;
    out.fill(0);
  }
  const QImage other = second.pixels(area);
  for (int row = 0; row < out.height(); ++row) {
    auto* line = reinterpret_cast<QRgb*>(out.scanLine(row));
    const auto* below =
        other.isNull() ? nullptr : reinterpret_cast<const QRgb*>(other.constScanLine(row));
    for (int column = 0; column < out.width(); ++column)
      line[column] =
          f(Pixel::fromRgb(line[column]), below ? Pixel::fromRgb(below[column]) : Pixel{}).toRgb();
  }
  return out;
}

/// An image that covers as much as the rule says, with the pixels that `render` gives.
[[nodiscard]] Image covering(const Image& first, const Image& second, Coverage coverage,
                             const ComputedImage::Render& render);

template <typename F>
[[nodiscard]] Image combined(const Image& first, const Image& second, Coverage coverage, F f) {
  return covering(first, second, coverage, [first, second, f](const QRect& area) {
    return combinedPixels(first, second, area, f);
  });
}

}  // namespace runtime::image
