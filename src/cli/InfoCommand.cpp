#include "cli/InfoCommand.h"

#include "cli/CommandOptions.h"
#include "cli/CompositionSummary.h"
#include "cli/Console.h"
#include "cli/DocumentReport.h"
#include "cli/InfoReport.h"
#include "cli/PatchesReport.h"

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
  return show(InfoReport(path, CompositionSummary::of(**composition),
                         runtime::CompositionRenderer(*compiled)),
              asJson);
}

ExitStatus showDocument(const QString& path, bool asJson) {
  const auto document = DocumentLoader::load(path);
  if (!document) return fail(document.error().status, document.error().error);
  return show(DocumentReport(path, *document), asJson);
}

}  // namespace

ExitStatus InfoCommand::run(const QStringList& arguments) {
  CommandOptions options(
      QStringLiteral("info FILE [--json]"),
      QStringLiteral("Shows what a file holds. Of a composition (.qtz): size, duration, published "
                     "inputs and outputs,\nstop frames, components and the patches that it needs. "
                     "Of a graphic's source (.json): stop frames\nand components with their "
                     "attributes and key frames."));
  options.flag(QStringLiteral("json"), QStringLiteral("as JSON"));
  if (const auto status = options.parse(arguments, 1)) return *status;
  const QString path = options.positional(0);
  const bool asJson = options.isSet(QStringLiteral("json"));
  return DocumentLoader::isDocument(path) ? showDocument(path, asJson)
                                          : showComposition(path, asJson);
}

ExitStatus InfoCommand::runPatches(const QStringList& arguments) {
  CommandOptions options(QStringLiteral("patches"),
                         QStringLiteral("Lists the patches that this program knows, with their "
                                        "ports, as Markdown."));
  if (const auto status = options.parse(arguments, 0)) return *status;
  Console::print(patchesReport());
  return ExitStatus::Ok;
}

}  // namespace cli
