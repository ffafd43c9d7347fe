#pragma once

#include "runtime/draw/DrawList.h"

/// Meshes of the solid renderers. All fit a unit cube around the origin, have normals and texture
/// coordinates (origin lower left), and turn their counter-clockwise sides outwards.
namespace runtime::patches {

using SharedMesh = std::shared_ptr<const Mesh>;

/// The unit square at z = 0, facing +z.
[[nodiscard]] SharedMesh squareMesh();
/// Diameter 1, poles on the y axis, the texture wrapped once around with its seam at the back.
[[nodiscard]] SharedMesh sphereMesh(int slices, int stacks);
/// Length 1 along y, with open ends; the radii are those of the lower and the upper end.
[[nodiscard]] SharedMesh cylinderMesh(int slices, int stacks, float base, float top);
/// A pot with lid, handle and spout, made of turned profiles and bent tubes.
[[nodiscard]] SharedMesh teapotMesh();
/// The unit square as columns × rows cells, facing +z.
[[nodiscard]] SharedMesh gridMesh(int columns, int rows);

}  // namespace runtime::patches
