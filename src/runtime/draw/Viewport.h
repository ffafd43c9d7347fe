#pragma once

#include <QMatrix4x4>
#include <QRect>
#include <QSize>
#include <QTransform>
#include <QVector3D>

namespace runtime {

/// Where a list's destination lies in the picture that is painted. Pixels, rows downwards.
struct Viewport {
  QSize size;     ///< of the destination
  QPoint origin;  ///< its upper left corner in the picture
  QRect clip;     ///< nothing outside is touched; within the picture
  /// Whether what lies beyond the destination is drawn too, as far as the clip lets it.
  bool drawsBeyond = false;

  [[nodiscard]] static Viewport whole(const QSize& size) {
    return {size, QPoint(), QRect(QPoint(), size)};
  }
  [[nodiscard]] QRect rect() const { return {origin, size}; }
  /// What may be drawn on.
  [[nodiscard]] QRect area() const { return drawsBeyond ? clip : clip & rect(); }
};

/// A point as the eye sees it: the pixel is (x / w, y / w); w is the distance from the eye divided
/// by the eye's distance from the plane z = 0, so 1 on that plane and negative behind the eye.
struct EyePoint {
  double x = 0;
  double y = 0;
  double w = 1;
  [[nodiscard]] QPointF pixel() const { return {x / w, y / w}; }
};

/// Things nearer to the eye than this are cut off, in units.
constexpr double nearDistance = 0.1;

/// From the destination's units to the eye's view of them.
[[nodiscard]] EyePoint eyePoint(const QVector3D& point, float eyeDistance,
                                const Viewport& viewport);

/// From the plane z = 0 under the matrix to pixels; affine where the plane is parallel to the
/// screen.
[[nodiscard]] QTransform pixelTransform(const QMatrix4x4& matrix, float eyeDistance,
                                        const Viewport& viewport);

}  // namespace runtime
