#include "cli/InfoCommand.h"

#include "cli/CommandOptions.h"
#include "cli/CompositionSummary.h"
#include "cli/Console.h"
#include "cli/InfoReport.h"
#include "cli/PatchesReport.h"

namespace cli {

ExitStatus InfoCommand::run(const QStringList& arguments) {
  CommandOptions options(
      QStringLiteral("info FILE [--json]"),
      QStringLiteral("Shows what a composition file (.qtz) holds: size, duration, published inputs "
                     "and outputs,\nstop frames, components and the patches that it needs."));
  options.flag(QStringLiteral("json"), QStringLiteral("as JSON"));
  if (const auto status = options.parse(arguments, 1)) return *status;
  const QString path = options.positional(0);
  const auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition) {
    Console::error(composition.error());
    return ExitStatus::InputUnreadable;
  }
  const auto compiled = runtime::CompiledComposition::compile(**composition, path);
  if (!compiled) {
    Console::error(compiled.error());
    return ExitStatus::InputUnreadable;
  }
  const InfoReport report(path, CompositionSummary::of(**composition),
                          runtime::CompositionRenderer(*compiled));
  Console::print(options.isSet(QStringLiteral("json")) ? report.json() : report.text());
  return ExitStatus::Ok;
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
