#pragma once

#include <algorithm>
#include <array>
#include <cmath>

namespace runtime::image::kernel {

/// A value of the kernel language: one to four components.
struct Vector {
  std::array<float, 4> v = {};
  int count = 1;
  bool isInteger = false;

  Vector() = default;
  Vector(float x) : v{x} {}
  Vector(std::array<float, 4> all, int count) : v(all), count(count) {}
  [[nodiscard]] bool truth() const { return v[0] != 0; }
  /// A scalar counts for each component.
  [[nodiscard]] float at(int i) const { return v[static_cast<size_t>(count == 1 ? 0 : i)]; }
};

template <typename F>
Vector each(const Vector& a, const F& f) {
  Vector out;
  out.count = a.count;
  for (int i = 0; i < out.count; ++i) out.v[static_cast<size_t>(i)] = f(a.at(i));
  return out;
}

template <typename F>
Vector each(const Vector& a, const Vector& b, const F& f) {
  Vector out;
  out.count = std::max(a.count, b.count);
  for (int i = 0; i < out.count; ++i) out.v[static_cast<size_t>(i)] = f(a.at(i), b.at(i));
  return out;
}

template <typename F>
Vector each(const Vector& a, const Vector& b, const Vector& c, const F& f) {
  Vector out;
  out.count = std::max({a.count, b.count, c.count});
  for (int i = 0; i < out.count; ++i) out.v[static_cast<size_t>(i)] = f(a.at(i), b.at(i), c.at(i));
  return out;
}

inline float dot(const Vector& a, const Vector& b) {
  float sum = 0;
  for (int i = 0; i < std::max(a.count, b.count); ++i) sum += a.at(i) * b.at(i);
  return sum;
}

inline float length(const Vector& a) {
  return std::sqrt(dot(a, a));
}

}  // namespace runtime::image::kernel
