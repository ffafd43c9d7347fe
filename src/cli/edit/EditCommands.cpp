#include "cli/edit/EditCommands.h"

#include <QDir>

#include "cli/Console.h"
#include "cli/edit/EditSession.h"

namespace cli {

const QList<EditCommand>& EditCommands::all() {
  static const QList<EditCommand> commands =
      QList<EditCommand>{newCommand(),    addCommand(),    setCommand(),      keyCommand(),
                         stopCommand(),   guideCommand(),  removeCommand(),   orderCommand(),
                         valuesCommand(), exportCommand(), thumbnailCommand()} +
      maintenanceCommands();
  return commands;
}

const EditCommand* EditCommands::named(const QString& name) {
  for (const EditCommand& command : all())
    if (command.name == name) return &command;
  return nullptr;
}

ExitStatus EditCommands::run(const EditCommand& command, const QStringList& arguments) {
  if (arguments.contains(QLatin1String("--help"))) {
    command.syntax()->printHelp();
    return ExitStatus::Ok;
  }
  EditSession session;
  const auto done =
      session.run(command, arguments, QDir::currentPath()).and_then([&] { return session.save(); });
  session.printFindings();
  if (done) return session.hasFindings() ? ExitStatus::Findings : ExitStatus::Ok;
  Console::error(done.error().error);
  return done.error().status;
}

}  // namespace cli
