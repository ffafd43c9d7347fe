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
void registerMathPatches(PatchRegistry& registry);
void registerSwitchPatches(PatchRegistry& registry);
void registerNoisePatches(PatchRegistry& registry);
void registerTimePatches(PatchRegistry& registry);
void registerWavePatches(PatchRegistry& registry);
void registerInterpolationPatches(PatchRegistry& registry);
void registerTimeLinePatch(PatchRegistry& registry);
void registerMemoryPatches(PatchRegistry& registry);
void registerFeedbackPatch(PatchRegistry& registry);
void registerDifferentialPatches(PatchRegistry& registry);
void registerPhysicsPatches(PatchRegistry& registry);
void registerTransformMacros(PatchRegistry& registry);
void registerEnvironmentMacros(PatchRegistry& registry);
void registerAnchorPatches(PatchRegistry& registry);
void registerInputDevicePatches(PatchRegistry& registry);
void registerHostInfoPatches(PatchRegistry& registry);
void registerNetworkPatches(PatchRegistry& registry);
void registerSolidPatches(PatchRegistry& registry);
void registerCompositionLoaderPatch(PatchRegistry& registry);
void registerFilePatches(PatchRegistry& registry);
void registerParticleSystemPatch(PatchRegistry& registry);
void registerLinesPatch(PatchRegistry& registry);
void registerMeshPatches(PatchRegistry& registry);
void registerStopframesPlugIn(PatchRegistry& registry);
void registerColorPatches(PatchRegistry& registry);
void registerStringPatches(PatchRegistry& registry);
void registerFormatterPatches(PatchRegistry& registry);
void registerStructurePatches(PatchRegistry& registry);
void registerExpressionPatch(PatchRegistry& registry);
void registerTextImage(PatchRegistry& registry);
void registerJavaScriptPatch(PatchRegistry& registry);
void registerImageSourcePatches(PatchRegistry& registry);
void registerMoviePatch(PatchRegistry& registry);
void registerImageFactPatches(PatchRegistry& registry);
void registerImageUsePatches(PatchRegistry& registry);
void registerImageKernelPatch(PatchRegistry& registry);

}  // namespace runtime::patches
