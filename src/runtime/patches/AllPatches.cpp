#include "runtime/patches/AllPatches.h"

namespace runtime::patches {

void registerAll(PatchRegistry& registry) {
  registerMacroPatches(registry);
  registerRenderInImage(registry);
  registerRendererPatches(registry);
  registerSplitterPatches(registry);
  registerDestinationPatches(registry);
  registerImageFilterPatches(registry);
  registerImageGeometryPatches(registry);
}

}  // namespace runtime::patches
