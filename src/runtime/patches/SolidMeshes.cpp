#include "runtime/patches/SolidMeshes.h"

#include <cmath>
#include <functional>
#include <map>
#include <mutex>
#include <numbers>

namespace runtime::patches {

namespace {

using Surface = std::function<QVector3D(float u, float v)>;

/// Adds the surface over (0…1, 0…1) as a net of quads. Normals follow from the net's directions:
/// a surface whose u runs to the right and v up when seen from outside faces outwards.
void addSurface(Mesh& mesh, int columns, int rows, const Surface& surface) {
  const auto first = static_cast<quint32>(mesh.vertices.size());
  constexpr float step = 1e-3F;
  for (int row = 0; row <= rows; ++row)
    for (int column = 0; column <= columns; ++column) {
      const float u = static_cast<float>(column) / static_cast<float>(columns);
      const float v = static_cast<float>(row) / static_cast<float>(rows);
      // Towards the inside of the net, so that poles have a direction too.
      const float inner = std::clamp(v, step, 1 - step);
      const QVector3D along = surface(u + step, inner) - surface(u - step, inner);
      const QVector3D up = surface(u, inner + step) - surface(u, inner - step);
      mesh.vertices.push_back(surface(u, v));
      mesh.normals.push_back(QVector3D::crossProduct(along / step, up / step).normalized());
      mesh.textureCoordinates.emplace_back(u, v);
    }
  const auto stride = static_cast<quint32>(columns + 1);
  for (quint32 row = 0; row < static_cast<quint32>(rows); ++row)
    for (quint32 column = 0; column < static_cast<quint32>(columns); ++column) {
      const quint32 corner = first + row * stride + column;
      for (const quint32 index :
           {corner, corner + 1, corner + stride + 1, corner, corner + stride + 1, corner + stride})
        mesh.indices.push_back(index);
    }
}

/// The angle of a place around the y axis: a half turn from the back, to the right in front.
QVector3D around(float u, float radius, float y) {
  const float angle = 2 * std::numbers::pi_v<float> * u;
  return {-std::sin(angle) * radius, y, -std::cos(angle) * radius};
}

/// A profile (radius, height) from below to above, turned about the y axis.
void addTurned(Mesh& mesh, const std::vector<QVector2D>& profile) {
  const auto count = static_cast<int>(profile.size()) - 1;
  addSurface(mesh, 24, count * 4, [&](float u, float v) {
    const float place = std::clamp(v, 0.0F, 1.0F) * static_cast<float>(count);
    const int i = std::min(static_cast<int>(place), count - 1);
    const float f = place - static_cast<float>(i);
    const QVector2D p =
        profile[static_cast<size_t>(i)] * (1 - f) + profile[static_cast<size_t>(i) + 1] * f;
    return around(u, p.x(), p.y());
  });
}

/// A tube along a quadratic curve in the plane z = 0.
void addTube(Mesh& mesh, QVector2D a, QVector2D b, QVector2D c, float startRadius,
             float endRadius) {
  addSurface(mesh, 12, 12, [=](float u, float v) {
    const QVector2D centre = a * (1 - v) * (1 - v) + b * 2 * v * (1 - v) + c * v * v;
    const QVector2D way = ((b - a) * (1 - v) + (c - b) * v).normalized();
    const float radius = startRadius + (endRadius - startRadius) * v;
    const float angle = 2 * std::numbers::pi_v<float> * u;
    const QVector3D side(way.y(), -way.x(), 0);
    return QVector3D(centre.x(), centre.y(), 0) +
           radius * (std::cos(angle) * side - std::sin(angle) * QVector3D(0, 0, 1));
  });
}

SharedMesh shared(Mesh mesh) {
  return std::make_shared<const Mesh>(std::move(mesh));
}

}  // namespace

SharedMesh gridMesh(int columns, int rows) {
  Mesh mesh;
  addSurface(mesh, columns, rows,
             [](float u, float v) { return QVector3D(u - 0.5F, v - 0.5F, 0); });
  return shared(std::move(mesh));
}

SharedMesh squareMesh() {
  static const SharedMesh mesh = gridMesh(1, 1);
  return mesh;
}

SharedMesh sphereMesh(int slices, int stacks) {
  // The spheres of an iterator are one mesh.
  static std::mutex mutex;
  static std::map<std::pair<int, int>, std::weak_ptr<const Mesh>> known;
  const std::lock_guard lock(mutex);
  std::weak_ptr<const Mesh>& place = known[{slices, stacks}];
  if (SharedMesh mesh = place.lock()) return mesh;
  Mesh mesh;
  addSurface(mesh, slices, stacks, [](float u, float v) {
    const float latitude = std::numbers::pi_v<float> * (v - 0.5F);
    return around(u, 0.5F * std::cos(latitude), 0.5F * std::sin(latitude));
  });
  const SharedMesh made = shared(std::move(mesh));
  place = made;
  return made;
}

SharedMesh cylinderMesh(int slices, int stacks, float base, float top) {
  Mesh mesh;
  addSurface(mesh, slices, stacks,
             [=](float u, float v) { return around(u, base + (top - base) * v, v - 0.5F); });
  return shared(std::move(mesh));
}

SharedMesh teapotMesh() {
  static const SharedMesh mesh = [] {
    Mesh pot;
    addTurned(pot, {{0, -0.25F},
                    {0.2F, -0.25F},
                    {0.28F, -0.15F},
                    {0.3F, -0.02F},
                    {0.26F, 0.1F},
                    {0.21F, 0.15F}});
    addTurned(pot, {{0.21F, 0.15F}, {0.12F, 0.19F}, {0.03F, 0.2F}, {0.05F, 0.24F}, {0, 0.26F}});
    addTube(pot, {0.25F, -0.1F}, {0.42F, -0.05F}, {0.48F, 0.15F}, 0.07F, 0.025F);
    addTube(pot, {-0.24F, 0.1F}, {-0.6F, 0.12F}, {-0.27F, -0.12F}, 0.025F, 0.025F);
    return shared(std::move(pot));
  }();
  return mesh;
}

}  // namespace runtime::patches
