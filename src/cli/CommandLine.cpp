#include "cli/CommandLine.h"

#include <exception>

#include "cli/CommandTable.h"
#include "cli/Console.h"
#include "cli/ProgramHelp.h"
#include "cli/edit/NearNames.h"
#include "document/ApplicationDefaults.h"

namespace cli {

namespace {

ExitStatus runCommand(const QStringList& arguments) {
  if (arguments.isEmpty()) {
    Console::error(QStringLiteral("no command given; see tessary --help"));
    return ExitStatus::Usage;
  }
  const QString& name = arguments.first();
  const QStringList rest = arguments.mid(1);
  if (name == QLatin1String("--help") || name == QLatin1String("-h") ||
      name == QLatin1String("help")) {
    const QString subject = rest.value(0);
    if (!subject.isEmpty() && !subject.startsWith(u'-') && subject != QLatin1String("help"))
      return runCommand({subject, QStringLiteral("--help")});
    Console::print(ProgramHelp::overview());
    return ExitStatus::Ok;
  }
  if (name == QLatin1String("--version") || name == QLatin1String("version")) {
    Console::print(QStringLiteral("tessary " TESSARY_VERSION));
    return ExitStatus::Ok;
  }
  if (const Command* command = CommandTable::named(name)) return command->run(rest);
  Console::error(
      QStringLiteral("there is neither a command nor a file '%1'; %2; see tessary --help")
          .arg(name, nearNames(name, CommandTable::names())));
  return ExitStatus::Usage;
}

}  // namespace

ExitStatus CommandLine::run(const QStringList& arguments) {
  try {
    document::registerApplicationDefaults(foundation::UserDefaults::standard());
    return runCommand(arguments);
  } catch (const std::exception& e) {
    Console::error(QStringLiteral("internal error: %1").arg(QString::fromUtf8(e.what())));
  } catch (...) {
    Console::error(QStringLiteral("internal error"));
  }
  return ExitStatus::InternalError;
}

}  // namespace cli
