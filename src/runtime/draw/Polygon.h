#pragma once

#include <QPointF>
#include <QRect>
#include <array>
#include <vector>

#include "runtime/draw/Viewport.h"

namespace runtime {

/// What varies over a polygon: texture coordinates, premultiplied colour (0…1), added highlight.
struct Attributes {
  enum { S, T, Red, Green, Blue, Alpha, SpecularRed, SpecularGreen, SpecularBlue, Count };
  std::array<double, Count> values{};
};

struct PolygonVertex {
  EyePoint eye;
  Attributes attributes;
};

/// A value that is linear on the screen: a·x + b·y + c.
struct ScreenPlane {
  double a = 0;
  double b = 0;
  double c = 0;
  [[nodiscard]] double at(double x, double y) const { return a * x + b * y + c; }
};

/// A flat convex polygon on the screen, with what varies over it in perspective.
class Polygon {
 public:
  /// Cuts off what is nearer than `nearest` (in w) and what is far outside the area. Empty when
  /// nothing is left or when it is seen exactly from the side.
  [[nodiscard]] static Polygon clipped(std::vector<PolygonVertex> vertices, double nearest,
                                       const QRect& area);

  [[nodiscard]] bool isEmpty() const { return m_points.size() < 3; }
  /// Counter-clockwise as seen on the screen.
  [[nodiscard]] bool facesEye() const { return m_area < 0; }
  [[nodiscard]] double pixelArea() const { return std::abs(m_area) / 2; }
  [[nodiscard]] double top() const { return m_top; }
  [[nodiscard]] double bottom() const { return m_bottom; }
  /// The part of the horizontal line through y that is inside; false when none is. Polygons that
  /// share an edge share its pixels without gap or overlap.
  [[nodiscard]] bool spanAt(double y, double& left, double& right) const;

  /// 1 / w there.
  [[nodiscard]] const ScreenPlane& nearness() const { return m_nearness; }
  [[nodiscard]] Attributes attributesAt(double x, double y) const;

 private:
  void project(const std::vector<PolygonVertex>& vertices);
  void makePlanes(const std::vector<PolygonVertex>& vertices);

  std::vector<QPointF> m_points;
  double m_area = 0;  ///< twice, signed
  double m_top = 0;
  double m_bottom = 0;
  ScreenPlane m_nearness;
  std::array<ScreenPlane, Attributes::Count> m_planes;  ///< of attribute / w
  std::array<bool, Attributes::Count> m_constant{};
  Attributes m_first;
};

}  // namespace runtime
