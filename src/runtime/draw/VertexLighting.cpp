#include "runtime/draw/VertexLighting.h"

#include <cmath>

namespace runtime {

namespace {

QVector3D rgb(const foundation::Color& c) {
  return {static_cast<float>(c.red), static_cast<float>(c.green), static_cast<float>(c.blue)};
}

}  // namespace

LitColor litVertex(const Lighting& lighting, const QVector3D& position, const QVector3D& normal,
                   const foundation::Color& color) {
  const QVector3D viewer(0, 0, 1);
  QVector3D light = rgb(lighting.ambient);
  QVector3D highlight;
  for (const Light& source : lighting.lights) {
    const QVector3D way = source.position - position;
    const float distance = way.length();
    const QVector3D towards = distance > 0 ? way / distance : normal;
    const float facing = QVector3D::dotProduct(normal, towards);
    if (!(facing > 0)) continue;
    const float strength = 1 / (1 + std::max(source.attenuation, 0.0F) * distance * distance);
    light += rgb(source.color) * (facing * strength);
    const QVector3D half = (towards + viewer).normalized();
    const float shine = std::max(QVector3D::dotProduct(normal, half), 0.0F);
    highlight += rgb(source.color) * (lighting.specular * strength *
                                      std::pow(shine, std::max(lighting.shininess, 0.0F)));
  }
  const auto one = [](double own, float by) { return std::clamp(own * by, 0.0, 1.0); };
  const foundation::Color lit{one(color.red, light.x()), one(color.green, light.y()),
                              one(color.blue, light.z()), color.alpha};
  return {lit, highlight};
}

}  // namespace runtime
