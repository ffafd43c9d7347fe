#include "runtime/draw/Viewport.h"

#include <array>

namespace runtime {

EyePoint eyePoint(const QVector3D& point, float eyeDistance, const Viewport& viewport) {
  const double scale = viewport.size.width() / 2.0;
  const double w = 1.0 - static_cast<double>(point.z()) / eyeDistance;
  return {point.x() * scale + w * (viewport.origin.x() + viewport.size.width() / 2.0),
          -point.y() * scale + w * (viewport.origin.y() + viewport.size.height() / 2.0), w};
}

QTransform pixelTransform(const QMatrix4x4& m, float eyeDistance, const Viewport& viewport) {
  // Rows of the result: images of (1, 0, 0), (0, 1, 0) and of the origin, homogeneous.
  const double scale = viewport.size.width() / 2.0;
  const double centerX = viewport.origin.x() + viewport.size.width() / 2.0;
  const double centerY = viewport.origin.y() + viewport.size.height() / 2.0;
  std::array<double, 3> x{};
  std::array<double, 3> y{};
  std::array<double, 3> w{};
  constexpr std::array<int, 3> columns{0, 1, 3};
  for (size_t i = 0; i < 3; ++i) {
    const int column = columns[i];
    w[i] = (i == 2 ? 1.0 : 0.0) - static_cast<double>(m(2, column)) / eyeDistance;
    x[i] = m(0, column) * scale + w[i] * centerX;
    y[i] = -m(1, column) * scale + w[i] * centerY;
  }
  if (w[0] == 0 && w[1] == 0 && w[2] > 0) {
    for (size_t i = 0; i < 3; ++i) {
      x[i] /= w[2];
      y[i] /= w[2];
    }
    w[2] = 1;
  }
  return {x[0], y[0], w[0], x[1], y[1], w[1], x[2], y[2], w[2]};
}

}  // namespace runtime
