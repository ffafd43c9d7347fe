#pragma once

#include "runtime/draw/PixelRows.h"
#include "runtime/draw/Surface.h"

namespace runtime {

/// Fills the surface on the pixels with antialiased edges, without looking at depth. Slower than
/// the toolkit's painter, but knows every blending, colour masks, textures that repeat and surfaces
/// that reach behind the eye.
void paintSurface(const Surface& surface, const QRect& clip, const PixelRows& target);

}  // namespace runtime
