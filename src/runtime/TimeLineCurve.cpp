#include "runtime/TimeLineCurve.h"

#include <algorithm>
#include <cmath>

namespace runtime {

namespace {

/// A cubic Bézier whose first control point is 0.
double bezier(double u, double p1, double p2, double p3) {
  const double rest = 1 - u;
  return 3 * u * rest * rest * p1 + 3 * u * u * rest * p2 + u * u * u * p3;
}

double bezierSlope(double u, double p1, double p2, double p3) {
  const double rest = 1 - u;
  return 3 * rest * rest * p1 + 6 * rest * u * (p2 - p1) + 3 * u * u * (p3 - p2);
}

TimeLineCurve::Point pointOf(const foundation::PropertyValue& stored) {
  const foundation::PropertyDictionary& d = stored.dictionary();
  return {d.value(u"time").toDouble(), d.value(u"value").toDouble()};
}

}  // namespace

TimeLineCurve::TimeLineCurve(std::vector<KeyFrame> keyFrames) : m_keyFrames(std::move(keyFrames)) {
  std::erase_if(m_keyFrames, [](const KeyFrame& k) { return !std::isfinite(k.place.time); });
  std::stable_sort(
      m_keyFrames.begin(), m_keyFrames.end(),
      [](const KeyFrame& a, const KeyFrame& b) { return a.place.time < b.place.time; });
  for (size_t i = 1; i < m_keyFrames.size(); ++i)
    m_segments.push_back(between(m_keyFrames[i - 1], m_keyFrames[i]));
}

TimeLineCurve TimeLineCurve::fromProperty(const foundation::PropertyArray& keyFrames) {
  std::vector<KeyFrame> list;
  list.reserve(static_cast<size_t>(keyFrames.size()));
  for (const foundation::PropertyValue& entry : keyFrames) {
    const foundation::PropertyDictionary& d = entry.dictionary();
    list.push_back({pointOf(d.value(u"kf")), pointOf(d.value(u"lc")), pointOf(d.value(u"rc"))});
    // The first jump of an index starts at no value: what held before goes on up to it.
    if (list.size() > 1 && !d.value(u"kf").dictionary().contains(u"value"))
      list.back().place.value = list[list.size() - 2].place.value;
  }
  return TimeLineCurve(std::move(list));
}

TimeLineCurve::Segment TimeLineCurve::between(const KeyFrame& first, const KeyFrame& second) {
  Segment s;
  s.start = first.place.time;
  s.duration = second.place.time - first.place.time;
  if (s.duration > 0) {
    // Handles that leave the segment would let time run backwards; NaN becomes the end.
    s.t1 = std::fmin(std::fmax(first.right.time / s.duration, 0), 1);
    s.t2 = std::fmin(std::fmax(1 + second.left.time / s.duration, 0), 1);
  }
  s.v0 = first.place.value;
  s.d1 = first.right.value;
  s.d3 = second.place.value - first.place.value;
  s.d2 = s.d3 + second.left.value;
  s.isStraight = first.right.time == 0 && first.right.value == 0 && second.left.time == 0 &&
                 second.left.value == 0;
  return s;
}

double TimeLineCurve::parameterAt(const Segment& segment, double fraction) {
  // Newton's steps, held between bounds that close in: the slope is 0 where a handle has no length.
  double low = 0;
  double high = 1;
  double u = fraction;
  for (int i = 0; i < 64; ++i) {
    const double error = bezier(u, segment.t1, segment.t2, 1) - fraction;
    if (std::abs(error) < 1e-15) break;
    (error > 0 ? high : low) = u;
    const double slope = bezierSlope(u, segment.t1, segment.t2, 1);
    const double next = slope > 1e-12 ? u - error / slope : low;
    u = next > low && next < high ? next : (low + high) / 2;
    if (high - low < 1e-16) break;
  }
  return u;
}

double TimeLineCurve::valueAt(double time) const {
  if (m_keyFrames.empty()) return 0;
  // Files hold times in single precision: 0.1 s must not fall just before a key frame at 0.1 s.
  const auto after = std::upper_bound(
      m_keyFrames.begin(), m_keyFrames.end(), time, [](double t, const KeyFrame& keyFrame) {
        return static_cast<float>(t) < static_cast<float>(keyFrame.place.time);
      });
  if (after == m_keyFrames.begin()) return m_keyFrames.front().place.value;
  if (after == m_keyFrames.end()) return m_keyFrames.back().place.value;
  const Point& reached = std::prev(after)->place;
  if (static_cast<float>(time) == static_cast<float>(reached.time)) return reached.value;
  const Segment& s = m_segments[static_cast<size_t>(after - m_keyFrames.begin()) - 1];
  const double fraction = std::clamp((time - s.start) / s.duration, 0.0, 1.0);
  if (s.isStraight) return s.v0 + s.d3 * fraction;
  // Differences to the first value keep constant pieces exact.
  return s.v0 + bezier(parameterAt(s, fraction), s.d1, s.d2, s.d3);
}

}  // namespace runtime
