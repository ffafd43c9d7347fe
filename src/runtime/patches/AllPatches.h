#pragma once

namespace runtime {
class PatchRegistry;
}

/// One function a family of patches; each registers its classes with ports and evaluators.
namespace runtime::patches {

void registerAll(PatchRegistry& registry);

void registerMacroPatches(PatchRegistry& registry);
void registerRenderInImage(PatchRegistry& registry);
void registerRendererPatches(PatchRegistry& registry);
void registerSplitterPatches(PatchRegistry& registry);
void registerDestinationPatches(PatchRegistry& registry);
void registerImageFilterPatches(PatchRegistry& registry);
void registerImageGeometryPatches(PatchRegistry& registry);

}  // namespace runtime::patches
