#include "runtime/patches/SeededNoise.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace runtime::patches {

namespace {

constexpr size_t maximumDimensions = 4;

/// Spreads every bit of the argument over the result.
quint64 mixed(quint64 v) {
  v += 0x9e3779b97f4a7c15ULL;
  v = (v ^ (v >> 30)) * 0xbf58476d1ce4e5b9ULL;
  v = (v ^ (v >> 27)) * 0x94d049bb133111ebULL;
  return v ^ (v >> 31);
}

double unit(quint64 bits) {
  return static_cast<double>(bits >> 11) * 0x1p-53;
}

/// Smooth to the second derivative, so that no seams show at whole numbers.
double fade(double t) {
  return t * t * t * (t * (t * 6 - 15) + 10);
}

}  // namespace

quint64 SeededNoise::hash(quint64 value) const {
  return mixed(mixed(m_seed) ^ value);
}

double SeededNoise::uniform(qint64 step) const {
  return unit(hash(static_cast<quint64>(step)));
}

double SeededNoise::smooth(std::span<const double> point) const {
  const size_t n = std::min(point.size(), maximumDimensions);
  std::array<double, maximumDimensions> fraction{};
  std::array<qint64, maximumDimensions> cell{};
  for (size_t i = 0; i < n; ++i) {
    if (!(std::abs(point[i]) < 1e15)) return 0;
    cell[i] = static_cast<qint64>(std::floor(point[i]));
    fraction[i] = point[i] - std::floor(point[i]);
  }
  double sum = 0;
  for (size_t corner = 0; corner < (size_t{1} << n); ++corner) {
    double weight = 1;
    double dot = 0;
    quint64 state = m_seed;
    for (size_t i = 0; i < n; ++i) {
      const bool far = (corner >> i) & 1;
      weight *= far ? fade(fraction[i]) : 1 - fade(fraction[i]);
      state = mixed(state ^ static_cast<quint64>(cell[i] + (far ? 1 : 0)));
    }
    for (size_t i = 0; i < n; ++i) {
      const bool far = (corner >> i) & 1;
      dot += (2 * unit(mixed(state + i + 1)) - 1) * (fraction[i] - (far ? 1 : 0));
    }
    sum += weight * dot;
  }
  return std::clamp(2 * sum / std::sqrt(static_cast<double>(std::max<size_t>(n, 1))), -1.0, 1.0);
}

}  // namespace runtime::patches
