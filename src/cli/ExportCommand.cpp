#include "cli/ExportCommand.h"

#include "cli/CommandOptions.h"
#include "cli/Console.h"
#include "cli/DocumentLoader.h"

namespace cli {

ExitStatus ExportCommand::run(const QStringList& arguments) {
  CommandOptions options(
      QStringLiteral("export DOCUMENT OUT.qtz [--background]"),
      QStringLiteral("Writes a graphic as one playout composition whose published keys a playout "
                     "system fills in.\nDOCUMENT is the source of a graphic (.json)."));
  options.flag(QStringLiteral("background"), QStringLiteral("with the graphic's background"));
  if (const auto status = options.parse(arguments, 2)) return *status;
  const auto document = DocumentLoader::load(options.positional(0));
  if (!document) {
    Console::error(document.error().error);
    return document.error().status;
  }
  const auto background = options.isSet(QStringLiteral("background"))
                              ? model::Composition::Background::Include
                              : model::Composition::Background::Exclude;
  if (const auto done = document->composition->exportToPath(options.positional(1), background);
      !done) {
    Console::error(done.error());
    return ExitStatus::OutputFailed;
  }
  Console::findings(options.positional(0), document->warnings);
  return document->warnings.isEmpty() ? ExitStatus::Ok : ExitStatus::Findings;
}

}  // namespace cli
