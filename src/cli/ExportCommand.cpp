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
  if (const auto done =
          document->exportTo(options.positional(1), options.isSet(QStringLiteral("background")));
      !done) {
    Console::error(done.error());
    return ExitStatus::OutputFailed;
  }
  Console::findings(options.positional(0), document->warnings);
  return document->warnings.isEmpty() ? ExitStatus::Ok : ExitStatus::Findings;
}

}  // namespace cli
