#pragma once

#include <array>
#include <optional>

#include "runtime/draw/DrawList.h"
#include "runtime/draw/Viewport.h"

namespace runtime {

/// The corners of a quad in the order of its texture: lower left, lower right, upper right, upper
/// left.
struct QuadCorners {
  std::array<QVector3D, 4> units;
  std::array<EyePoint, 4> eye;

  /// Nothing where the matrix is not finite or the eye's distance is no distance.
  [[nodiscard]] static std::optional<QuadCorners> of(const QMatrix4x4& matrix, float eyeDistance,
                                                     const Viewport& viewport);
  /// A corner lies before the near plane, so that the quad must be clipped.
  [[nodiscard]] bool crossesNearPlane(float eyeDistance) const;
  /// Meaningless when the quad crosses the near plane.
  [[nodiscard]] QRectF pixelBounds() const;
  /// The front is seen: its corners run counter-clockwise on the screen.
  [[nodiscard]] bool facesEye() const;
  /// Mean lengths of the sides in pixels: lower and upper, left and right.
  [[nodiscard]] QSizeF pixelSize() const;
};

[[nodiscard]] bool isCulled(FaceCulling culling, bool facesEye);

/// The pixels that drawing the item may touch, within the viewport's clip.
[[nodiscard]] QRect touchedPixels(const DrawItem& item, const Viewport& viewport);

/// Components clamped to 0…1; NaN becomes 0.
[[nodiscard]] foundation::Color clamped(const foundation::Color& color);

}  // namespace runtime
