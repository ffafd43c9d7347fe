#include "cli/CommandTable.h"

#include <QRegularExpression>

#include "cli/BatchCommand.h"
#include "cli/CheckCommand.h"
#include "cli/CompletionCommand.h"
#include "cli/InfoCommand.h"
#include "cli/ManualCommand.h"
#include "cli/RenderCommand.h"
#include "cli/RenderOptions.h"
#include "cli/edit/EditCommands.h"

namespace cli {

namespace {

QList<Command> madeCommands() {
  QList<Command> commands{
      {QStringLiteral("info"), InfoCommand::syntax, InfoCommand::run},
      {QStringLiteral("check"), CheckCommand::syntax, CheckCommand::run},
      {QStringLiteral("render"), RenderOptions::syntax, RenderCommand::run},
      {QStringLiteral("patches"), InfoCommand::patchesSyntax, InfoCommand::runPatches}};
  for (const EditCommand& edit : EditCommands::all())
    commands.append(
        {edit.name, [&edit] { return edit.syntax(); },
         [&edit](const QStringList& arguments) { return EditCommands::run(edit, arguments); }});
  commands.append({QStringLiteral("batch"), BatchCommand::syntax, BatchCommand::run});
  commands.append(
      {QStringLiteral("completion"), CompletionCommand::syntax, CompletionCommand::run});
  commands.append({QStringLiteral("manual"), ManualCommand::syntax, ManualCommand::run});
  return commands;
}

}  // namespace

QString Command::summary() const {
  static const QRegularExpression end(QStringLiteral("[.:;](\\s|$)"));
  const QString about = syntax()->about().simplified();
  return about.left(about.indexOf(end));
}

const QList<Command>& CommandTable::all() {
  static const QList<Command> commands = madeCommands();
  return commands;
}

const Command* CommandTable::named(const QString& name) {
  for (const Command& command : all())
    if (command.name == name) return &command;
  return nullptr;
}

QStringList CommandTable::names() {
  QStringList names;
  for (const Command& command : all()) names.append(command.name);
  return names;
}

}  // namespace cli
