#include "cli/InfoCommand.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include "cli/CommandOptions.h"
#include "cli/Console.h"
#include "cli/DocumentReport.h"
#include "cli/GraphReport.h"
#include "cli/InfoReport.h"
#include "cli/PatchesReport.h"
#include "cli/PlayableFile.h"
#include "playout/InputSchema.h"

namespace cli {

namespace {

ExitStatus fail(ExitStatus status, const foundation::Error& error) {
  Console::error(error);
  return status;
}

template <typename Report>
ExitStatus show(const Report& report, bool asJson) {
  Console::print(asJson ? report.json() : report.text());
  return ExitStatus::Ok;
}

ExitStatus showComposition(const QString& path, bool asJson) {
  const auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition) return fail(ExitStatus::InputUnreadable, composition.error());
  const auto compiled = runtime::CompiledComposition::compile(**composition, path);
  if (!compiled) return fail(ExitStatus::InputUnreadable, compiled.error());
  return show(InfoReport(path, render::CompositionSummary::of(**composition),
                         runtime::CompositionRenderer(*compiled)),
              asJson);
}

ExitStatus showDocument(const QString& path, bool asJson) {
  const auto document = DocumentLoader::load(path);
  if (!document) return fail(document.error().status, document.error().error);
  return show(DocumentReport(path, *document), asJson);
}

/// Of a document, what its export publishes.
ExitStatus showSchema(const QString& path) {
  const auto input = PlayableFile::load(path, false);
  if (!input) return fail(input.error().status, input.error().error);
  Console::print(playout::InputSchema(QFileInfo(path).completeBaseName(), *input->renderer).json());
  return ExitStatus::Ok;
}

ExitStatus showGraphOf(const QString& path) {
  const auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition) return fail(ExitStatus::InputUnreadable, composition.error());
  Console::print(GraphReport(**composition).text());
  return ExitStatus::Ok;
}

/// Of a document, that of its export.
ExitStatus showGraph(const QString& path) {
  if (!DocumentLoader::isDocument(path)) return showGraphOf(path);
  const auto document = DocumentLoader::load(path);
  if (!document) return fail(document.error().status, document.error().error);
  const QTemporaryDir folder;
  const QString exported = folder.filePath(QStringLiteral("Composition.qtz"));
  if (const auto done = document->exportTo(exported, false); !done)
    return fail(ExitStatus::OutputFailed, done.error());
  return showGraphOf(exported);
}

}  // namespace

std::unique_ptr<CommandOptions> InfoCommand::syntax() {
  auto options = std::make_unique<CommandOptions>(
      QStringLiteral("info FILE [--json | --schema | --graph]"),
      QStringLiteral("Shows what a file holds. Of a composition (.qtz): size, duration, published "
                     "inputs and outputs,\nstop frames, components and the patches that it needs. "
                     "Of a document (.composition): stop frames\nand components with their "
                     "attributes and key frames."));
  options->flag(QStringLiteral("json"), QStringLiteral("as JSON"));
  options->flag(QStringLiteral("schema"),
                QStringLiteral("a JSON Schema of the values that render --values takes for it"));
  options->flag(
      QStringLiteral("graph"),
      QStringLiteral("its nodes with their links and values; of a document, its export's"));
  return options;
}

ExitStatus InfoCommand::run(const QStringList& arguments) {
  const std::unique_ptr<CommandOptions> made = syntax();
  CommandOptions& options = *made;
  if (const auto status = options.parse(arguments, 1)) return *status;
  const QString path = options.positional(0);
  const bool asSchema = options.isSet(QStringLiteral("schema"));
  const bool asJson = options.isSet(QStringLiteral("json"));
  const bool asGraph = options.isSet(QStringLiteral("graph"));
  if (asSchema + asJson + asGraph > 1)
    return fail(ExitStatus::Usage,
                {QStringLiteral("--json, --schema and --graph exclude each other"), {}, {}});
  if (asSchema) return showSchema(path);
  if (asGraph) return showGraph(path);
  return DocumentLoader::isDocument(path) ? showDocument(path, asJson)
                                          : showComposition(path, asJson);
}

std::unique_ptr<CommandOptions> InfoCommand::patchesSyntax() {
  return std::make_unique<CommandOptions>(
      QStringLiteral("patches"),
      QStringLiteral("Lists the patches that this program knows, with their ports, as Markdown."));
}

ExitStatus InfoCommand::runPatches(const QStringList& arguments) {
  if (const auto status = patchesSyntax()->parse(arguments, 0)) return *status;
  Console::print(patchesReport());
  return ExitStatus::Ok;
}

}  // namespace cli
