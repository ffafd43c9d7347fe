#include "cli/RenderCommand.h"

#include "cli/Console.h"
#include "cli/InputAssignment.h"
#include "cli/Interruption.h"
#include "cli/PlayableFile.h"
#include "cli/ProgressBar.h"
#include "cli/RenderOptions.h"
#include "cli/ValueSource.h"
#include "render/RenderJob.h"

namespace cli {

namespace {

ExitStatus fail(ExitStatus status, const foundation::Error& error) {
  Console::error(error);
  return status;
}

InputAssignment::Done setInputs(const RenderOptions& options, render::PlayableInput& input) {
  runtime::CompositionRenderer& renderer = *input.renderer;
  if (!options.values.isEmpty()) {
    const auto source =
        ValueSource::read(options.values, options.valuesRow, options.input, renderer);
    if (!source) return tl::unexpected(source.error());
    if (auto ok = source->assign(renderer); !ok) return ok;
    input.facts.findings += source->findings;
  }
  for (const QString& assignment : options.assignments)
    if (auto ok = InputAssignment::assign(assignment, renderer); !ok) return ok;
  return {};
}

foundation::Result<void> runWatched(render::RenderJob& job, render::FrameWriter& writer) {
  const qint64 total = job.frames().value_or(0);
  const bool isShown = Console::errorIsTerminal() && job.frames().value_or(2) > 1;
  std::optional<ProgressBar> progress;  // its clock starts with the first frame that is kept
  qint64 written = 0;
  const auto follow = [&](qint64 delivered) {
    if (!progress) progress.emplace(QStringLiteral("rendering"), total, isShown);
    progress->update(written = delivered);
  };
  auto done = job.run(writer, {.progress = follow, .isCancelled = Interruption::isRequested});
  progress->finish(written);
  return done;
}

}  // namespace

ExitStatus RenderCommand::run(const QStringList& arguments) {
  const std::unique_ptr<CommandOptions> syntax = RenderOptions::syntax();
  if (const auto status = syntax->parse(arguments, 1)) return *status;
  const auto options = RenderOptions::read(*syntax);
  if (!options) return fail(ExitStatus::Usage, options.error());

  using Keys = PlayableFile::Keys;
  const bool isSet = ValueSource::isSet(options->values, options->valuesRow, options->input);
  auto input =
      PlayableFile::load(options->input, options->background, isSet ? Keys::Sets : Keys::Exported);
  if (!input) return fail(input.error().status, input.error().error);
  if (const auto ok = setInputs(*options, *input); !ok)
    return fail(ok.error().status, ok.error().error);
  auto schedule = InputAssignment::schedule(options->updates, *input->renderer);
  if (!schedule) return fail(schedule.error().status, schedule.error().error);
  render::RenderJob job(*options, *input, std::move(*schedule));
  if (const auto ok = job.plan(); !ok) return fail(ExitStatus::Usage, ok.error());
  auto writer = render::FrameWriter::forOutput(job.target());
  if (!writer) return fail(ExitStatus::OutputFailed, writer.error());
  const Interruption interruption;
  if (const auto ok = runWatched(job, **writer); !ok)
    return fail(Interruption::isRequested() ? ExitStatus::Interrupted : ExitStatus::OutputFailed,
                ok.error());

  const QStringList findings = input->facts.findings + input->renderer->findings() + job.findings();
  Console::findings(options->input, findings);
  return findings.isEmpty() ? ExitStatus::Ok : ExitStatus::Findings;
}

}  // namespace cli
