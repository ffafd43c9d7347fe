#pragma once

#include <QRect>
#include <QSize>

namespace canvas {

class CanvasGeometry;

/// Where the picture lies on the pixels that a part of the canvas takes. Device pixels, rows
/// downwards.
struct PictureTarget {
  QSize pixels;   ///< of the part
  QRect picture;  ///< the whole picture, from the part's upper left corner

  /// The part of a view (logical pixels) at so many device pixels a point.
  [[nodiscard]] static PictureTarget of(const CanvasGeometry& geometry, const QRect& part,
                                        double devicePixelRatio);
  friend bool operator==(const PictureTarget&, const PictureTarget&) = default;
};

}  // namespace canvas
