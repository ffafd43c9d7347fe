#include "cli/ExportCommand.h"

#include "cli/Console.h"

namespace cli {

ExitStatus ExportCommand::run(const QStringList&) {
  Console::error(QStringLiteral("no documents yet"));
  return ExitStatus::InternalError;
}

}  // namespace cli
