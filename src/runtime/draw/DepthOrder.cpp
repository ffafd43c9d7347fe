#include "runtime/draw/DepthOrder.h"

#include <optional>

#include "runtime/draw/ItemGeometry.h"

namespace runtime {

namespace {

/// Slack in units for surfaces that mean to lie in one plane.
constexpr float slack = 1e-4F;

/// A flat thing in space.
struct Flat {
  std::array<QVector3D, 4> corners;
  QVector3D normal;  ///< towards the eye; null for a line
  float nearest = 0;
  float farthest = 0;  ///< distance from the eye along the view
  QRectF onScreen;
  QVector3D eye;

  void complete(const Viewport& viewport, float eyeDistance) {
    eye = QVector3D(0, 0, eyeDistance);
    nearest = farthest = eyeDistance - corners[0].z();
    bool crosses = false;
    QPolygonF points;
    for (const QVector3D& corner : corners) {
      const float distance = eyeDistance - corner.z();
      nearest = std::min(nearest, distance);
      farthest = std::max(farthest, distance);
      crosses |= distance < static_cast<float>(nearDistance);
      if (!crosses) points.append(eyePoint(corner, eyeDistance, viewport).pixel());
    }
    onScreen = crosses ? QRectF(-1e9, -1e9, 2e9, 2e9) : points.boundingRect();
    normal = QVector3D::crossProduct(corners[1] - corners[0], corners[3] - corners[0]).normalized();
    if (QVector3D::dotProduct(normal, eye - corners[0]) < 0) normal = -normal;
  }
  /// All corners of the other lie on the eye's side of this plane, or in it.
  [[nodiscard]] bool isBehind(const Flat& other) const { return liesOnOneSide(other, 1); }
  /// All corners of the other lie on the far side of this plane, or in it.
  [[nodiscard]] bool isBefore(const Flat& other) const { return liesOnOneSide(other, -1); }

 private:
  [[nodiscard]] bool liesOnOneSide(const Flat& other, float sign) const {
    if (normal.isNull()) return false;
    return std::all_of(other.corners.begin(), other.corners.end(), [&](const QVector3D& p) {
      return sign * QVector3D::dotProduct(normal, p - corners[0]) >= -slack;
    });
  }
};

std::optional<Flat> flatOf(const QuadItem& quad, const Viewport& viewport) {
  const auto corners = QuadCorners::of(quad.matrix, quad.state.eyeDistance, viewport);
  if (!corners) return std::nullopt;
  Flat flat;
  flat.corners = corners->units;
  flat.complete(viewport, quad.state.eyeDistance);
  return flat;
}

std::optional<Flat> flatOf(const LineItem& line, const Viewport& viewport) {
  Flat flat;
  flat.corners = {line.start, line.end, line.end, line.start};
  flat.complete(viewport, line.state.eyeDistance);
  const qreal r = line.width;
  flat.onScreen = flat.onScreen.adjusted(-r, -r, r, r);
  return flat;
}

class OrderCheck {
 public:
  /// False when the item would have to be hidden by an earlier one.
  template <class Item>
  bool accepts(const Item& item) {
    if (item.state.depth == DepthTesting::None) return true;
    const auto flat = flatOf(item, m_viewport);
    if (!flat) return true;
    if (!passes(*flat)) return false;
    if (item.state.depth == DepthTesting::ReadWrite) {
      m_nearest = m_written.empty() ? flat->nearest : std::min(m_nearest, flat->nearest);
      m_written.push_back(*flat);
    }
    return true;
  }
  void clear() { m_written.clear(); }

 private:
  [[nodiscard]] bool passes(const Flat& item) const {
    // The usual case: all in one plane, or later ones nearer.
    if (m_written.empty() || item.farthest <= m_nearest + slack) return true;
    return std::all_of(m_written.begin(), m_written.end(), [&item](const Flat& earlier) {
      return item.farthest <= earlier.nearest + slack ||
             !earlier.onScreen.intersects(item.onScreen) || earlier.isBehind(item) ||
             item.isBefore(earlier);
    });
  }

  // Only relations count, so any size of picture does.
  Viewport m_viewport = Viewport::whole({1000, 1000});
  std::vector<Flat> m_written;
  float m_nearest = 0;
};

bool isFlat(const DrawItem& item) {
  if (std::holds_alternative<MeshItem>(item)) return false;
  const auto* quad = std::get_if<QuadItem>(&item);
  return !quad || !quad->state.lighting;
}

}  // namespace

bool paintersOrderSuffices(const DrawList& list) {
  OrderCheck check;
  for (const DrawItem& item : list.items) {
    if (!isFlat(item)) return false;
    if (const auto* clear = std::get_if<ClearItem>(&item)) {
      if (clear->clearsDepth) check.clear();
    } else if (const auto* gradient = std::get_if<GradientItem>(&item)) {
      if (gradient->clearsDepth) check.clear();
    } else if (const auto* quad = std::get_if<QuadItem>(&item)) {
      if (!check.accepts(*quad)) return false;
    } else if (const auto* line = std::get_if<LineItem>(&item)) {
      if (!check.accepts(*line)) return false;
    }
  }
  return true;
}

}  // namespace runtime
