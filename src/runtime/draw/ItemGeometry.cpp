#include "runtime/draw/ItemGeometry.h"

#include <QPolygonF>
#include <cmath>

namespace runtime {

namespace {

bool isFinite(const QMatrix4x4& m) {
  for (int i = 0; i < 16; ++i)
    if (!std::isfinite(m.constData()[i])) return false;
  return true;
}

bool isFinite(const QVector3D& p) {
  return std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z());
}

/// Whole pixels around the area, widened by the pixel that antialiasing may reach; never
/// overflowing.
QRect pixelsAround(const QRectF& area, const QRect& clip) {
  const QRectF wide = area.adjusted(-1, -1, 1, 1) & QRectF(clip);
  return wide.isEmpty() ? QRect() : wide.toAlignedRect() & clip;
}

QRect touched(const QuadItem& quad, const Viewport& viewport) {
  const auto corners = QuadCorners::of(quad.matrix, quad.state.eyeDistance, viewport);
  if (!corners) return {};
  if (corners->crossesNearPlane(quad.state.eyeDistance)) return viewport.clip;
  return pixelsAround(corners->pixelBounds(), viewport.clip);
}

QRect touched(const LineItem& line, const Viewport& viewport) {
  if (!isFinite(line.start) || !isFinite(line.end) || !(line.width > 0)) return {};
  const EyePoint a = eyePoint(line.start, line.state.eyeDistance, viewport);
  const EyePoint b = eyePoint(line.end, line.state.eyeDistance, viewport);
  const double nearest = nearDistance / line.state.eyeDistance;
  if (a.w < nearest || b.w < nearest) return viewport.clip;
  const double r = line.width;
  const QRectF box = QRectF(a.pixel(), b.pixel()).normalized().adjusted(-r, -r, r, r);
  return pixelsAround(box, viewport.clip);
}

QRect touched(const MeshItem& mesh, const Viewport& viewport) {
  if (!mesh.mesh || !isFinite(mesh.matrix)) return {};
  QPolygonF points;
  points.reserve(static_cast<qsizetype>(mesh.mesh->vertices.size()));
  const double nearest = nearDistance / mesh.state.eyeDistance;
  for (const QVector3D& vertex : mesh.mesh->vertices) {
    const EyePoint p = eyePoint(mesh.matrix.map(vertex), mesh.state.eyeDistance, viewport);
    if (!(p.w >= nearest)) return viewport.clip;
    points.append(p.pixel());
  }
  return pixelsAround(points.boundingRect(), viewport.clip);
}

QRect touched(const ClearItem& clear, const Viewport& viewport) {
  return clear.clearsColor ? viewport.clip & viewport.rect() : QRect();
}

QRect touched(const GradientItem&, const Viewport& viewport) {
  return viewport.clip & viewport.rect();
}

}  // namespace

std::optional<QuadCorners> QuadCorners::of(const QMatrix4x4& matrix, float eyeDistance,
                                           const Viewport& viewport) {
  if (!isFinite(matrix) || !(eyeDistance > 0)) return std::nullopt;
  constexpr std::array<std::array<float, 2>, 4> square{
      {{-0.5F, -0.5F}, {0.5F, -0.5F}, {0.5F, 0.5F}, {-0.5F, 0.5F}}};
  QuadCorners corners;
  for (size_t i = 0; i < 4; ++i) {
    corners.units[i] = matrix.map(QVector3D(square[i][0], square[i][1], 0));
    if (!isFinite(corners.units[i])) return std::nullopt;
    corners.eye[i] = eyePoint(corners.units[i], eyeDistance, viewport);
  }
  return corners;
}

bool QuadCorners::crossesNearPlane(float eyeDistance) const {
  const double nearest = nearDistance / eyeDistance;
  return std::any_of(eye.begin(), eye.end(), [&](const EyePoint& p) { return p.w < nearest; });
}

QRectF QuadCorners::pixelBounds() const {
  QPolygonF points;
  for (const EyePoint& p : eye) points.append(p.pixel());
  return points.boundingRect();
}

bool QuadCorners::facesEye() const {
  double area = 0;  // twice the signed area; rows run down, so counter-clockwise is negative
  for (size_t i = 0; i < 4; ++i) {
    const QPointF a = eye[i].pixel();
    const QPointF b = eye[(i + 1) % 4].pixel();
    area += a.x() * b.y() - b.x() * a.y();
  }
  return area < 0;
}

QSizeF QuadCorners::pixelSize() const {
  const auto length = [this](size_t a, size_t b) {
    const QPointF d = eye[b].pixel() - eye[a].pixel();
    return std::hypot(d.x(), d.y());
  };
  return {(length(0, 1) + length(3, 2)) / 2, (length(0, 3) + length(1, 2)) / 2};
}

bool isCulled(FaceCulling culling, bool facesEye) {
  return (culling == FaceCulling::Back && !facesEye) || (culling == FaceCulling::Front && facesEye);
}

QRect touchedPixels(const DrawItem& item, const Viewport& viewport) {
  return std::visit([&](const auto& i) { return touched(i, viewport); }, item);
}

foundation::Color clamped(const foundation::Color& color) {
  const auto one = [](double v) { return v > 0 ? std::min(v, 1.0) : 0.0; };
  return {one(color.red), one(color.green), one(color.blue), one(color.alpha)};
}

}  // namespace runtime
