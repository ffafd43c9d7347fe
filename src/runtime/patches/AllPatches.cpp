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
  registerMathPatches(registry);
  registerSwitchPatches(registry);
  registerNoisePatches(registry);
  registerTimePatches(registry);
  registerWavePatches(registry);
  registerInterpolationPatches(registry);
  registerTimeLinePatch(registry);
  registerMemoryPatches(registry);
  registerFeedbackPatch(registry);
  registerDifferentialPatches(registry);
  registerPhysicsPatches(registry);
  registerTransformMacros(registry);
  registerEnvironmentMacros(registry);
  registerAnchorPatches(registry);
  registerInputDevicePatches(registry);
  registerHostInfoPatches(registry);
  registerNetworkPatches(registry);
  registerSolidPatches(registry);
  registerCompositionLoaderPatch(registry);
  registerFilePatches(registry);
  registerParticleSystemPatch(registry);
  registerLinesPatch(registry);
  registerMeshPatches(registry);
  registerStopframesPlugIn(registry);
  registerColorPatches(registry);
  registerStringPatches(registry);
  registerFormatterPatches(registry);
  registerStructurePatches(registry);
  registerExpressionPatch(registry);
  registerTextImage(registry);
  registerJavaScriptPatch(registry);
  registerImageSourcePatches(registry);
  registerMoviePatch(registry);
  registerImageFactPatches(registry);
  registerImageUsePatches(registry);
  registerImageKernelPatch(registry);
}

}  // namespace runtime::patches
