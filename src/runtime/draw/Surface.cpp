#include "runtime/draw/Surface.h"

#include <cmath>

#include "runtime/draw/BitmapCache.h"
#include "runtime/draw/ItemGeometry.h"
#include "runtime/draw/VertexLighting.h"

namespace runtime {

namespace {

using Vertices = std::vector<PolygonVertex>;

Surface stateOf(const DrawState& state) {
  Surface surface;
  surface.blending = state.blending;
  surface.depth = state.depth;
  surface.writtenBits = writtenBits(state.colorMask);
  surface.eyeDistance = state.eyeDistance;
  return surface;
}

void setColor(Attributes& attributes, const foundation::Color& straight) {
  const foundation::Color c = clamped(straight);
  attributes.values[Attributes::Red] = c.red * c.alpha;
  attributes.values[Attributes::Green] = c.green * c.alpha;
  attributes.values[Attributes::Blue] = c.blue * c.alpha;
  attributes.values[Attributes::Alpha] = c.alpha;
}

void setLitColor(Attributes& attributes, const LitColor& lit) {
  setColor(attributes, lit.color);
  attributes.values[Attributes::SpecularRed] = lit.highlight.x() * lit.color.alpha;
  attributes.values[Attributes::SpecularGreen] = lit.highlight.y() * lit.color.alpha;
  attributes.values[Attributes::SpecularBlue] = lit.highlight.z() * lit.color.alpha;
}

void setTexturePlace(Attributes& attributes, const QTransform& matrix, const QPointF& place) {
  const QPointF mapped = matrix.map(place);
  attributes.values[Attributes::S] = mapped.x();
  attributes.values[Attributes::T] = mapped.y();
}

void add(Surface& surface, Vertices vertices, const DrawState& state, const Viewport& viewport) {
  const double nearest = nearDistance / state.eyeDistance;
  Polygon polygon = Polygon::clipped(std::move(vertices), nearest, viewport.clip);
  if (polygon.isEmpty() || isCulled(state.culling, polygon.facesEye())) return;
  surface.polygons.push_back(std::move(polygon));
}

QVector3D normalOf(const QMatrix4x4& matrix, const QVector3D& normal) {
  const QMatrix3x3 m = matrix.normalMatrix();
  const auto row = [&](int r) {
    return m(r, 0) * normal.x() + m(r, 1) * normal.y() + m(r, 2) * normal.z();
  };
  return QVector3D(row(0), row(1), row(2)).normalized();
}

/// Without an image a mask still cuts its shape out of the plain colour.
QImage bitmapOf(const Image& image, const Image& mask) {
  if (!image.isNull() || mask.isNull()) return image.bitmap();
  QImage white(mask.size(), QImage::Format_ARGB32_Premultiplied);
  white.fill(Qt::white);
  return white;
}

/// How many of the texture's pixels fall on one of the screen's, over all polygons of a mesh.
QSizeF meshTextureSize(const Mesh& mesh, const std::vector<Polygon>& polygons, const QSize& size) {
  double onScreen = 0;
  for (const Polygon& polygon : polygons) onScreen += polygon.pixelArea();
  double onTexture = 0;
  for (size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
    const QVector2D& a = mesh.textureCoordinates[mesh.indices[i]];
    const QVector2D u = mesh.textureCoordinates[mesh.indices[i + 1]] - a;
    const QVector2D v = mesh.textureCoordinates[mesh.indices[i + 2]] - a;
    onTexture += std::abs(static_cast<double>(u.x() * v.y() - u.y() * v.x())) / 2;
  }
  if (!(onTexture > 0)) return size;
  const double side = std::sqrt(onScreen / onTexture / size.width() / size.height());
  return QSizeF(size) * side;
}

bool isSound(const Mesh& mesh) {
  const size_t count = mesh.vertices.size();
  const auto fits = [count](size_t n) { return n == 0 || n == count; };
  return fits(mesh.normals.size()) && fits(mesh.textureCoordinates.size()) &&
         fits(mesh.colors.size()) &&
         std::all_of(mesh.indices.begin(), mesh.indices.end(),
                     [count](quint32 i) { return i < count; });
}

/// The vertices of a mesh as the eye sees them.
Vertices vertexesOf(const MeshItem& item, const Viewport& viewport) {
  const Mesh& mesh = *item.mesh;
  const bool lit = item.state.lighting && !mesh.normals.empty();
  Vertices result(mesh.vertices.size());
  for (size_t i = 0; i < result.size(); ++i) {
    const QVector3D place = item.matrix.map(mesh.vertices[i]);
    PolygonVertex& vertex = result[i];
    vertex.eye = eyePoint(place, item.state.eyeDistance, viewport);
    foundation::Color color = clamped(item.color);
    if (!mesh.colors.empty()) {
      const foundation::Color own = clamped(mesh.colors[i]);
      color = {color.red * own.red, color.green * own.green, color.blue * own.blue,
               color.alpha * own.alpha};
    }
    if (lit)
      setLitColor(vertex.attributes, litVertex(*item.state.lighting, place,
                                               normalOf(item.matrix, mesh.normals[i]), color));
    else
      setColor(vertex.attributes, color);
    if (!mesh.textureCoordinates.empty())
      setTexturePlace(vertex.attributes, item.image.textureMatrix(),
                      mesh.textureCoordinates[i].toPointF());
  }
  return result;
}

}  // namespace

Surface Surface::of(const QuadItem& quad, const Viewport& viewport) {
  Surface surface = stateOf(quad.state);
  const auto corners = QuadCorners::of(quad.matrix, quad.state.eyeDistance, viewport);
  if (!corners) return surface;
  constexpr std::array<QPointF, 4> places{QPointF(0, 0), QPointF(1, 0), QPointF(1, 1),
                                          QPointF(0, 1)};
  Vertices vertices(4);
  for (size_t i = 0; i < 4; ++i) {
    vertices[i].eye = corners->eye[i];
    setTexturePlace(vertices[i].attributes, quad.image.textureMatrix(), places[i]);
    if (quad.state.lighting)
      setLitColor(vertices[i].attributes,
                  litVertex(*quad.state.lighting, corners->units[i],
                            normalOf(quad.matrix, QVector3D(0, 0, 1)), clamped(quad.color)));
    else
      setColor(vertices[i].attributes, quad.color);
  }
  if (quad.state.lighting) {
    // Colours of four corners do not lie in a plane: two triangles, as a graphics card draws it.
    add(surface, {vertices[0], vertices[1], vertices[2]}, quad.state, viewport);
    add(surface, {vertices[0], vertices[2], vertices[3]}, quad.state, viewport);
  } else {
    add(surface, std::move(vertices), quad.state, viewport);
  }
  const QImage bitmap = bitmapOf(quad.image, quad.mask);
  if (bitmap.isNull() || surface.polygons.empty()) return surface;
  BitmapChange change;
  change.mask = quad.mask.bitmap();
  if (!corners->crossesNearPlane(quad.state.eyeDistance)) {
    const QRectF seen = quad.image.textureMatrix().mapRect(QRectF(0, 0, 1, 1));
    const QSizeF size = corners->pixelSize();
    change.reduce(bitmap.size(), {size.width() / std::max(seen.width(), 1e-6),
                                  size.height() / std::max(seen.height(), 1e-6)});
  }
  surface.texture = Texture(BitmapCache::shared().changed(bitmap, change), quad.image.repeats());
  return surface;
}

Surface Surface::of(const LineItem& line, const Viewport& viewport) {
  Surface surface = stateOf(line.state);
  const float eye = line.state.eyeDistance;
  if (!(line.width > 0) || !(eye > 0)) return surface;
  std::array<PolygonVertex, 2> ends;
  ends[0].eye = eyePoint(line.start, eye, viewport);
  ends[1].eye = eyePoint(line.end, eye, viewport);
  setColor(ends[0].attributes, line.startColor);
  setColor(ends[1].attributes, line.endColor);
  const double nearest = nearDistance / eye * 1.001;
  for (size_t i = 0; i < 2; ++i) {
    const PolygonVertex& other = ends[1 - i];
    PolygonVertex& end = ends[i];
    if (end.eye.w >= nearest) continue;
    if (!(other.eye.w > nearest)) return surface;
    const double f = (nearest - end.eye.w) / (other.eye.w - end.eye.w);
    const auto mix = [f](double a, double b) { return a + (b - a) * f; };
    end.eye = {mix(end.eye.x, other.eye.x), mix(end.eye.y, other.eye.y), nearest};
    for (size_t k = 0; k < Attributes::Count; ++k)
      end.attributes.values[k] = mix(end.attributes.values[k], other.attributes.values[k]);
  }
  const QPointF along = ends[1].eye.pixel() - ends[0].eye.pixel();
  const double length = std::hypot(along.x(), along.y());
  if (!(length > 0) || !std::isfinite(length)) return surface;
  const QPointF side =
      QPointF(-along.y(), along.x()) * (std::min(line.width, 4096.0F) / 2 / length);
  Vertices vertices{ends[0], ends[1], ends[1], ends[0]};
  constexpr std::array<int, 4> sides{1, 1, -1, -1};
  for (size_t i = 0; i < 4; ++i) {
    vertices[i].eye.x += side.x() * sides[i] * vertices[i].eye.w;
    vertices[i].eye.y += side.y() * sides[i] * vertices[i].eye.w;
  }
  DrawState state = line.state;
  state.culling = FaceCulling::None;
  add(surface, std::move(vertices), state, viewport);
  return surface;
}

Surface Surface::of(const MeshItem& item, const Viewport& viewport) {
  Surface surface = stateOf(item.state);
  if (!item.mesh || !isSound(*item.mesh) || !(item.state.eyeDistance > 0)) return surface;
  const Mesh& mesh = *item.mesh;
  const Vertices vertices = vertexesOf(item, viewport);
  for (size_t i = 0; i + 2 < mesh.indices.size(); i += 3)
    add(surface,
        {vertices[mesh.indices[i]], vertices[mesh.indices[i + 1]], vertices[mesh.indices[i + 2]]},
        item.state, viewport);
  const QImage bitmap = mesh.textureCoordinates.empty() ? QImage() : item.image.bitmap();
  if (bitmap.isNull() || surface.polygons.empty()) return surface;
  BitmapChange change;
  change.reduce(bitmap.size(), meshTextureSize(mesh, surface.polygons, bitmap.size()));
  surface.texture = Texture(BitmapCache::shared().changed(bitmap, change), item.image.repeats());
  return surface;
}

QRgb Surface::colorAt(const Polygon& polygon, double x, double y) const {
  const Attributes at = polygon.attributesAt(x, y);
  const QRgb texel = texture.isNull()
                         ? 0xFFFFFFFFU
                         : texture.at(at.values[Attributes::S], at.values[Attributes::T]);
  const double texelAlpha = qAlpha(texel);
  const auto channel = [&](int level, size_t factor, size_t added) {
    const double v = level * at.values[factor] + texelAlpha * at.values[added];
    return static_cast<int>(std::clamp(v, 0.0, 255.0) + 0.5);
  };
  const double a = std::clamp(texelAlpha * at.values[Attributes::Alpha], 0.0, 255.0);
  const int alpha = static_cast<int>(a + 0.5);
  return qRgba(
      std::min(alpha, channel(qRed(texel), Attributes::Red, Attributes::SpecularRed)),
      std::min(alpha, channel(qGreen(texel), Attributes::Green, Attributes::SpecularGreen)),
      std::min(alpha, channel(qBlue(texel), Attributes::Blue, Attributes::SpecularBlue)), alpha);
}

}  // namespace runtime
