#include "runtime/draw/Polygon.h"

#include <cmath>

namespace runtime {

namespace {

PolygonVertex between(const PolygonVertex& a, const PolygonVertex& b, double f) {
  const auto mix = [f](double u, double v) { return u + (v - u) * f; };
  PolygonVertex result;
  result.eye = {mix(a.eye.x, b.eye.x), mix(a.eye.y, b.eye.y), mix(a.eye.w, b.eye.w)};
  for (size_t i = 0; i < Attributes::Count; ++i)
    result.attributes.values[i] = mix(a.attributes.values[i], b.attributes.values[i]);
  return result;
}

/// Keeps the part where distance(vertex) is not negative.
template <class Distance>
void cut(std::vector<PolygonVertex>& vertices, Distance distance) {
  std::vector<PolygonVertex> kept;
  kept.reserve(vertices.size() + 2);
  for (size_t i = 0; i < vertices.size(); ++i) {
    const PolygonVertex& a = vertices[i];
    const PolygonVertex& b = vertices[(i + 1) % vertices.size()];
    const double da = distance(a.eye);
    const double db = distance(b.eye);
    if (da >= 0) kept.push_back(a);
    if ((da >= 0) != (db >= 0)) kept.push_back(between(a, b, da / (da - db)));
  }
  vertices = std::move(kept);
}

}  // namespace

Polygon Polygon::clipped(std::vector<PolygonVertex> vertices, double nearest, const QRect& area) {
  constexpr double margin = 16;
  const double left = area.left() - margin;
  const double right = area.right() + margin;
  const double top = area.top() - margin;
  const double bottom = area.bottom() + margin;
  const auto outside = [&](auto distance) {
    for (const PolygonVertex& v : vertices)
      if (!(distance(v.eye) >= 0)) return true;
    return false;
  };
  const auto keep = [&](auto distance) {
    if (outside(distance)) cut(vertices, distance);
  };
  keep([nearest](const EyePoint& p) { return p.w - nearest; });
  keep([left](const EyePoint& p) { return p.x - left * p.w; });
  keep([right](const EyePoint& p) { return right * p.w - p.x; });
  keep([top](const EyePoint& p) { return p.y - top * p.w; });
  keep([bottom](const EyePoint& p) { return bottom * p.w - p.y; });
  Polygon polygon;
  if (vertices.size() >= 3) polygon.project(vertices);
  return polygon;
}

void Polygon::project(const std::vector<PolygonVertex>& vertices) {
  m_points.reserve(vertices.size());
  for (const PolygonVertex& v : vertices) m_points.push_back(v.eye.pixel());
  m_top = m_bottom = m_points.front().y();
  for (size_t i = 0; i < m_points.size(); ++i) {
    const QPointF& a = m_points[i];
    const QPointF& b = m_points[(i + 1) % m_points.size()];
    m_area += a.x() * b.y() - b.x() * a.y();
    m_top = std::min(m_top, a.y());
    m_bottom = std::max(m_bottom, a.y());
  }
  if (!(std::abs(m_area) > 1e-9)) {
    m_points.clear();
    return;
  }
  makePlanes(vertices);
}

void Polygon::makePlanes(const std::vector<PolygonVertex>& vertices) {
  // The widest triangle with the first vertex determines the planes best.
  size_t second = 1;
  size_t third = 2;
  double largest = 0;
  const QPointF o = m_points[0];
  for (size_t i = 1; i + 1 < m_points.size(); ++i) {
    for (size_t j = i + 1; j < m_points.size(); ++j) {
      const QPointF u = m_points[i] - o;
      const QPointF v = m_points[j] - o;
      const double area = std::abs(u.x() * v.y() - u.y() * v.x());
      if (area <= largest) continue;
      largest = area;
      second = i;
      third = j;
    }
  }
  const QPointF u = m_points[second] - o;
  const QPointF v = m_points[third] - o;
  const double determinant = u.x() * v.y() - u.y() * v.x();
  const auto plane = [&](double at0, double at1, double at2) {
    const double d1 = at1 - at0;
    const double d2 = at2 - at0;
    ScreenPlane p;
    p.a = (d1 * v.y() - d2 * u.y()) / determinant;
    p.b = (d2 * u.x() - d1 * v.x()) / determinant;
    p.c = at0 - p.a * o.x() - p.b * o.y();
    return p;
  };
  const std::array<const PolygonVertex*, 3> corner{&vertices[0], &vertices[second],
                                                   &vertices[third]};
  m_nearness = plane(1 / corner[0]->eye.w, 1 / corner[1]->eye.w, 1 / corner[2]->eye.w);
  m_first = vertices[0].attributes;
  for (size_t i = 0; i < Attributes::Count; ++i) {
    m_constant[i] = true;
    for (const PolygonVertex& vertex : vertices)
      if (vertex.attributes.values[i] != m_first.values[i]) m_constant[i] = false;
    const auto over = [i](const PolygonVertex* p) { return p->attributes.values[i] / p->eye.w; };
    if (!m_constant[i]) m_planes[i] = plane(over(corner[0]), over(corner[1]), over(corner[2]));
  }
}

bool Polygon::spanAt(double y, double& left, double& right) const {
  int crossings = 0;
  for (size_t i = 0; i < m_points.size(); ++i) {
    const QPointF* a = &m_points[i];
    const QPointF* b = &m_points[(i + 1) % m_points.size()];
    if (a->y() > b->y()) std::swap(a, b);
    if (y < a->y() || y >= b->y()) continue;
    const double x = a->x() + (b->x() - a->x()) * ((y - a->y()) / (b->y() - a->y()));
    left = crossings == 0 ? x : std::min(left, x);
    right = crossings == 0 ? x : std::max(right, x);
    ++crossings;
  }
  return crossings >= 2;
}

Attributes Polygon::attributesAt(double x, double y) const {
  Attributes result = m_first;
  // Half a pixel outside, at an edge, a steep plane may pass the horizon.
  const double w = 1 / std::max(m_nearness.at(x, y), 1e-9);
  for (size_t i = 0; i < Attributes::Count; ++i)
    if (!m_constant[i]) result.values[i] = m_planes[i].at(x, y) * w;
  return result;
}

}  // namespace runtime
