#include "render/PlayableInput.h"

namespace render {

foundation::Result<PlayableInput> PlayableInput::fromFile(const QString& path) {
  const auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition) return tl::unexpected(composition.error());
  auto compiled = runtime::CompiledComposition::compile(**composition, path);
  if (!compiled) return tl::unexpected(compiled.error());
  PlayableInput input;
  input.renderer = std::make_unique<runtime::CompositionRenderer>(*compiled);
  input.summary = CompositionSummary::of(**composition);
  return input;
}

void PlayableInput::describe(const document::CompositionDocument& document, bool background) {
  const model::Composition& composition = *document.composition();
  renderer->userInfo().insert(QStringLiteral("baseFolder"), document.fileURL().toLocalFile());
  drawsBackground = background && composition.backgroundMode() != model::BackgroundMode::None;
  findings = document.warnings();
  const model::VideoResolution format = composition.videoResolution();
  isInterlaced = render::isInterlaced(format.title());
  rate = frameRate(format.frameRate());
}

}  // namespace render
