#pragma once

#include "runtime/Execution.h"
#include "runtime/PatchClass.h"
#include "runtime/patches/PortHelpers.h"

/// Ports and conversions that the renderers share.
namespace runtime::patches {

/// X, Y, Z position and rotation, in that order.
[[nodiscard]] QList<Port> placePorts();
[[nodiscard]] Port blendingPort(Blending defaultValue);
[[nodiscard]] Port depthPort(DepthTesting defaultValue);
[[nodiscard]] Port cullingPort(FaceCulling defaultValue);
[[nodiscard]] Port interactionPort();

[[nodiscard]] Blending blendingOf(quint64 code);
[[nodiscard]] DepthTesting depthOf(quint64 code);
[[nodiscard]] FaceCulling cullingOf(quint64 code);
/// The surroundings' state with what three of the patch's ports say.
[[nodiscard]] DrawState drawState(const Execution& x, int blending, int depth, int culling);

/// around · T(x, y, z) · Rx · Ry · Rz; angles in degrees.
[[nodiscard]] QMatrix4x4 placed(const QMatrix4x4& around, double x, double y, double z, double rx,
                                double ry, double rz);

}  // namespace runtime::patches
