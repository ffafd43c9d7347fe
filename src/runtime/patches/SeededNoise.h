#pragma once

#include <QtGlobal>
#include <span>

namespace runtime::patches {

/// Numbers that look random and depend on nothing but their arguments: the same on every machine
/// and in every order of evaluation.
class SeededNoise {
 public:
  explicit SeededNoise(quint64 seed) : m_seed(seed) {}

  /// Uniform in 0 ≤ v < 1, one for each step.
  [[nodiscard]] double uniform(qint64 step) const;
  /// Gradient noise of one to four coordinates: smooth, 0 at whole numbers, within −1…1. Zero for
  /// coordinates that are not finite.
  [[nodiscard]] double smooth(std::span<const double> point) const;

 private:
  [[nodiscard]] quint64 hash(quint64 value) const;
  quint64 m_seed;
};

}  // namespace runtime::patches
