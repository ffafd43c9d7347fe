#include "cli/PlayableInput.h"

#include <QTemporaryDir>

#include "model/VideoModes.h"

namespace cli {

namespace {

using Loaded = tl::expected<PlayableInput, LoadFailure>;

Loaded fromComposition(const QString& path) {
  const auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition)
    return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, composition.error()});
  auto compiled = runtime::CompiledComposition::compile(**composition, path);
  if (!compiled) return tl::unexpected(LoadFailure{ExitStatus::InputUnreadable, compiled.error()});
  PlayableInput input;
  input.renderer = std::make_unique<runtime::CompositionRenderer>(*compiled);
  input.summary = CompositionSummary::of(**composition);
  return input;
}

/// What goes on air is the export, so that is what is played.
Loaded fromDocument(const QString& path, bool background) {
  auto document = DocumentLoader::load(path);
  if (!document) return tl::unexpected(document.error());
  const QTemporaryDir folder;
  const QString exported = folder.filePath(QStringLiteral("Composition.qtz"));
  if (const auto done = document->exportTo(exported, background); !done)
    return tl::unexpected(LoadFailure{ExitStatus::OutputFailed, done.error()});
  Loaded input = fromComposition(exported);
  if (!input) return input;
  const model::Composition& composition = document->composition();
  input->renderer->userInfo().insert(QStringLiteral("baseFolder"), document->folder());
  input->drawsBackground =
      background && composition.backgroundMode() != model::BackgroundMode::None;
  input->findings = document->warnings();
  input->isInterlaced = isInterlaced(composition.videoResolution().title());
  input->rate = frameRate(composition.videoResolution().frameRate());
  return input;
}

}  // namespace

Loaded PlayableInput::load(const QString& path, bool background) {
  return DocumentLoader::isDocument(path) ? fromDocument(path, background) : fromComposition(path);
}

}  // namespace cli
