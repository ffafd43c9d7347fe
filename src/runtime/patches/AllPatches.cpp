#include "runtime/patches/AllPatches.h"

namespace runtime::patches {

void registerAll(PatchRegistry& registry) {
  registerAnchorPatches(registry);
  registerColorPatches(registry);
  registerCompositionLoaderPatch(registry);
  registerDestinationPatches(registry);
  registerDifferentialPatches(registry);
  registerEnvironmentMacros(registry);
  registerExpressionPatch(registry);
  registerFeedbackPatch(registry);
  registerFilePatches(registry);
  registerFormatterPatches(registry);
  registerHostInfoPatches(registry);
  registerImageFactPatches(registry);
  registerImageFilterPatches(registry);
  registerImageGeometryPatches(registry);
  registerImageKernelPatch(registry);
  registerImageSourcePatches(registry);
  registerImageUsePatches(registry);
  registerInputDevicePatches(registry);
  registerInterpolationPatches(registry);
  registerJavaScriptPatch(registry);
  registerLinesPatch(registry);
  registerMacroPatches(registry);
  registerMathPatches(registry);
  registerMemoryPatches(registry);
  registerMeshPatches(registry);
  registerMoviePatch(registry);
  registerNetworkPatches(registry);
  registerNoisePatches(registry);
  registerParticleSystemPatch(registry);
  registerPhysicsPatches(registry);
  registerRenderInImage(registry);
  registerRendererPatches(registry);
  registerSolidPatches(registry);
  registerSplitterPatches(registry);
  registerStopframesPlugIn(registry);
  registerStringPatches(registry);
  registerStructurePatches(registry);
  registerSwitchPatches(registry);
  registerTextImage(registry);
  registerTimeLinePatch(registry);
  registerTimePatches(registry);
  registerTransformMacros(registry);
  registerWavePatches(registry);
}

}  // namespace runtime::patches
