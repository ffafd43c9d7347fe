#include "cli/PlayableInput.h"

namespace cli {

namespace {

tl::expected<PlayableInput, PlayableInput::Failure> fromComposition(
    const quartz::QuartzComposition& composition, const QString& path) {
  auto compiled = runtime::CompiledComposition::compile(composition, path);
  if (!compiled)
    return tl::unexpected(PlayableInput::Failure{ExitStatus::InputUnreadable, compiled.error()});
  PlayableInput input;
  input.renderer = std::make_unique<runtime::CompositionRenderer>(*compiled);
  input.summary = CompositionSummary::of(composition);
  return input;
}

}  // namespace

tl::expected<PlayableInput, PlayableInput::Failure> PlayableInput::load(const QString& path,
                                                                        bool /*background*/) {
  const auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition)
    return tl::unexpected(Failure{ExitStatus::InputUnreadable, composition.error()});
  return fromComposition(**composition, path);
}

}  // namespace cli
