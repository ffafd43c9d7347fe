#pragma once

#include <vector>

#include "runtime/draw/DrawList.h"
#include "runtime/draw/Polygon.h"
#include "runtime/draw/Texture.h"

namespace runtime {

/// An item as polygons in pixels: culled, clipped and lit, ready to be filled.
struct Surface {
  std::vector<Polygon> polygons;
  Texture texture;
  Blending blending = Blending::Over;
  DepthTesting depth = DepthTesting::None;
  QRgb writtenBits = 0xFFFFFFFFU;
  float eyeDistance = 1;

  [[nodiscard]] static Surface of(const QuadItem& quad, const Viewport& viewport);
  [[nodiscard]] static Surface of(const LineItem& line, const Viewport& viewport);
  [[nodiscard]] static Surface of(const MeshItem& mesh, const Viewport& viewport);

  /// The premultiplied colour of a polygon at a place of the screen.
  [[nodiscard]] QRgb colorAt(const Polygon& polygon, double x, double y) const;
};

}  // namespace runtime
