#include "render/PlayableInput.h"

namespace render {

DocumentFacts DocumentFacts::of(const document::CompositionDocument& document, bool background) {
  const model::Composition& composition = *document.composition();
  const model::VideoResolution format = composition.videoResolution();
  return {
      .folder = document.fileURL().toLocalFile(),
      .rate = frameRate(format.frameRate()),
      .isInterlaced = format.isInterlaced(),
      .drawsBackground = background && composition.backgroundMode() != model::BackgroundMode::None,
      .findings = document.warnings()};
}

namespace {

void letStopsPass(quartz::QuartzComposition& composition) {
  const QString settings = QStringLiteral("plugInState");
  for (const auto& node : composition.rootPatch()->nodes()) {
    if (node->identifier() != QLatin1String("BRVStopframesPlugIn")) continue;
    foundation::PropertyDictionary changed = node->state().value(settings).dictionary();
    changed.insert(QStringLiteral("enableStopframesInBRVApps"), false);
    node->editState().insert(settings, changed);
  }
}

}  // namespace

foundation::Result<PlayableInput> PlayableInput::fromFile(const QString& path, Stops stops) {
  const auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition) return tl::unexpected(composition.error());
  if (stops == Stops::Pass) letStopsPass(**composition);
  auto compiled = runtime::CompiledComposition::compile(**composition, path);
  if (!compiled) return tl::unexpected(compiled.error());
  PlayableInput input;
  input.renderer = std::make_unique<runtime::CompositionRenderer>(*compiled);
  input.summary = CompositionSummary::of(**composition);
  return input;
}

void PlayableInput::describe(DocumentFacts documentFacts) {
  facts = std::move(documentFacts);
  renderer->userInfo().insert(QStringLiteral("baseFolder"), facts.folder);
}

}  // namespace render
