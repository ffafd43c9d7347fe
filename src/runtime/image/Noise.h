#pragma once

#include <QtGlobal>
#include <cmath>

namespace runtime::image {

/// A well-mixed number for a place of a grid; the same everywhere and always.
[[nodiscard]] inline quint32 noiseHash(int x, int y) {
  quint32 h = static_cast<quint32>(x) * 0x9E3779B1U ^ static_cast<quint32>(y) * 0x85EBCA77U;
  h = (h ^ (h >> 15)) * 0x2C1B3C6DU;
  h = (h ^ (h >> 12)) * 0x297A2D39U;
  return h ^ (h >> 15);
}

/// The same as a number of 0…1.
[[nodiscard]] inline double noiseValue(int x, int y) {
  return noiseHash(x, y) / 4294967295.0;
}

/// Smooth noise of 0…1 over the plane, one random value a unit.
[[nodiscard]] inline double smoothNoise(double x, double y) {
  const double fx = x - std::floor(x);
  const double fy = y - std::floor(y);
  const auto column = static_cast<int>(std::floor(x));
  const auto row = static_cast<int>(std::floor(y));
  const double u = fx * fx * (3 - 2 * fx);
  const double v = fy * fy * (3 - 2 * fy);
  const auto along = [&](int r) {
    return noiseValue(column, r) * (1 - u) + noiseValue(column + 1, r) * u;
  };
  return along(row) * (1 - v) + along(row + 1) * v;
}

}  // namespace runtime::image
