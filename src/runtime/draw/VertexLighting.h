#pragma once

#include "runtime/draw/DrawList.h"

namespace runtime {

/// The colours of a lit vertex, straight; the highlight is added after texturing.
struct LitColor {
  foundation::Color color;
  QVector3D highlight;
};

/// The fixed-function model for one vertex in the destination's units: ambient and diffuse
/// reflection by the vertex's own colour, a grey highlight, a distant viewer, one-sided surfaces.
/// Each light fades by 1 / (1 + attenuation · distance²). The normal has length one.
[[nodiscard]] LitColor litVertex(const Lighting& lighting, const QVector3D& position,
                                 const QVector3D& normal, const foundation::Color& color);

}  // namespace runtime
