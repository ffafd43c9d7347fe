#pragma once

namespace runtime {
class PatchRegistry;
}

/// One function a family of patches; each registers its classes with ports and evaluators,
/// and aliases of its own classes only, so that their order does not matter.
namespace runtime::patches {

void registerAll(PatchRegistry& registry);

void registerAnchorPatches(PatchRegistry& registry);
void registerColorPatches(PatchRegistry& registry);
void registerCompositionLoaderPatch(PatchRegistry& registry);
void registerDestinationPatches(PatchRegistry& registry);
void registerDifferentialPatches(PatchRegistry& registry);
void registerEnvironmentMacros(PatchRegistry& registry);
void registerExpressionPatch(PatchRegistry& registry);
void registerFeedbackPatch(PatchRegistry& registry);
void registerFilePatches(PatchRegistry& registry);
void registerFormatterPatches(PatchRegistry& registry);
void registerHostInfoPatches(PatchRegistry& registry);
void registerImageFactPatches(PatchRegistry& registry);
void registerImageFilterPatches(PatchRegistry& registry);
void registerImageGeometryPatches(PatchRegistry& registry);
void registerImageKernelPatch(PatchRegistry& registry);
void registerImageSourcePatches(PatchRegistry& registry);
void registerImageUsePatches(PatchRegistry& registry);
void registerInputDevicePatches(PatchRegistry& registry);
void registerInterpolationPatches(PatchRegistry& registry);
void registerJavaScriptPatch(PatchRegistry& registry);
void registerLinesPatch(PatchRegistry& registry);
void registerMacroPatches(PatchRegistry& registry);
void registerMathPatches(PatchRegistry& registry);
void registerMemoryPatches(PatchRegistry& registry);
void registerMeshPatches(PatchRegistry& registry);
void registerMoviePatch(PatchRegistry& registry);
void registerNetworkPatches(PatchRegistry& registry);
void registerNoisePatches(PatchRegistry& registry);
void registerParticleSystemPatch(PatchRegistry& registry);
void registerPhysicsPatches(PatchRegistry& registry);
void registerRenderInImage(PatchRegistry& registry);
void registerRendererPatches(PatchRegistry& registry);
void registerSolidPatches(PatchRegistry& registry);
void registerSplitterPatches(PatchRegistry& registry);
void registerStopframesPlugIn(PatchRegistry& registry);
void registerStringPatches(PatchRegistry& registry);
void registerStructurePatches(PatchRegistry& registry);
void registerSwitchPatches(PatchRegistry& registry);
void registerTextImage(PatchRegistry& registry);
void registerTimeLinePatch(PatchRegistry& registry);
void registerTimePatches(PatchRegistry& registry);
void registerTransformMacros(PatchRegistry& registry);
void registerWavePatches(PatchRegistry& registry);

}  // namespace runtime::patches
