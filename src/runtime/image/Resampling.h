#pragma once

#include <QTransform>

#include "runtime/Image.h"

namespace runtime::image {

/// The image under an affine or perspective map of image space (y up). Null when the map cannot be
/// inverted. Moves by whole pixels keep every pixel as it is.
[[nodiscard]] Image transformed(const Image& image, const QTransform& map);
/// The same, with the edge pixels going on for ever.
[[nodiscard]] Image clampedTo(const Image& image, const QTransform& map);
/// The same, repeated for ever in both directions.
[[nodiscard]] Image tiled(const Image& image, const QTransform& map);
/// Resampled to a number of pixels, averaging where it shrinks; lower left corner at `origin`.
[[nodiscard]] Image resized(const Image& image, const QSize& size, const QPoint& origin = {});

/// translate(−origin), scale, rotate (degrees, counter-clockwise), translate(origin + move).
[[nodiscard]] QTransform imageTransform(const QPointF& origin, double scaleX, double scaleY,
                                        double degrees, const QPointF& move);

}  // namespace runtime::image
