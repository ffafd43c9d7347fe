#include "cli/CommandLine.h"

#include <exception>

#include "cli/CheckCommand.h"
#include "cli/Console.h"
#include "cli/ExportCommand.h"
#include "cli/InfoCommand.h"
#include "cli/RenderCommand.h"

namespace cli {

namespace {

const char* const overview = R"(Usage: tessary COMMAND [OPTIONS]

Commands:
  info FILE            what a file holds: size, inputs, outputs, stop frames, patches; components
  render FILE -o OUT   frames of a composition: pictures, a movie, or raw RGBA to standard output
  check FILE…          what in composition files cannot work as meant
  export DOC OUT.qtz   one playout composition from a document
  patches              the patches that this program knows, as Markdown

Options:
  --help               this text; with a command, that command's options
  --version            the program's version

Exit status: 0 done, 1 done with findings, 2 wrong usage, 3 input unreadable,
4 output failed, 5 files of the program missing, 70 internal error, 130 stopped by Ctrl+C or SIGTERM.)";

ExitStatus runCommand(const QStringList& arguments) {
  if (arguments.isEmpty()) {
    Console::error(QStringLiteral("no command given; see tessary --help"));
    return ExitStatus::Usage;
  }
  const QString& command = arguments.first();
  const QStringList rest = arguments.mid(1);
  if (command == QLatin1String("--help") || command == QLatin1String("-h") ||
      command == QLatin1String("help")) {
    Console::print(QString::fromUtf8(overview));
    return ExitStatus::Ok;
  }
  if (command == QLatin1String("--version")) {
    Console::print(QStringLiteral("tessary " TESSARY_VERSION));
    return ExitStatus::Ok;
  }
  if (command == QLatin1String("info")) return InfoCommand::run(rest);
  if (command == QLatin1String("render")) return RenderCommand::run(rest);
  if (command == QLatin1String("check")) return CheckCommand::run(rest);
  if (command == QLatin1String("export")) return ExportCommand::run(rest);
  if (command == QLatin1String("patches")) return InfoCommand::runPatches(rest);
  Console::error(QStringLiteral("there is no command '%1'; see tessary --help").arg(command));
  return ExitStatus::Usage;
}

}  // namespace

ExitStatus CommandLine::run(const QStringList& arguments) {
  try {
    return runCommand(arguments);
  } catch (const std::exception& e) {
    Console::error(QStringLiteral("internal error: %1").arg(QString::fromUtf8(e.what())));
  } catch (...) {
    Console::error(QStringLiteral("internal error"));
  }
  return ExitStatus::InternalError;
}

}  // namespace cli
