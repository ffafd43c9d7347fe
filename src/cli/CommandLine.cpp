#include "cli/CommandLine.h"

#include <exception>

#include "cli/BatchCommand.h"
#include "cli/CheckCommand.h"
#include "cli/Console.h"
#include "cli/InfoCommand.h"
#include "cli/RenderCommand.h"
#include "cli/edit/EditCommands.h"
#include "document/ApplicationDefaults.h"

namespace cli {

namespace {

const char* const overview = R"(Usage: tessary COMMAND [OPTIONS]

Look at files (.qtz compositions and .composition documents) and play them:
  info FILE                what a file holds: size, inputs, outputs, stop frames; components
  check FILE…              what in it cannot work as meant
  render FILE -o OUT       frames: pictures, a movie, or raw RGBA to standard output
  patches                  the patches that this program knows, as Markdown

Make and edit documents:
  new OUT.composition      an empty document
  add DOC COMPONENT        a component: a standard one, a .qtz file or a picture
  set DOC TARGET KEY=VALUE values of a component, or of the document itself
  key DOC TARGET KEY TIME=VALUE  key frames
  stop DOC TIME [TEXT]     a stop frame, which waits for a trigger
  guide DOC x|y POSITION   a guide line
  remove DOC TARGET…       components
  order DOC TARGET front   stacking
  embed, relative, upgrade DOC  files that it uses, and its standard components
  export DOC OUT.qtz       one playout composition
  thumbnail DOC OUT.png    the picture that stands for it
  batch [FILE | -]         these commands from a script

Options:
  --help               this text; with a command, all about that command (also: help COMMAND)
  --version            the program's version

A lower third, made, animated and played:

  tessary new name.composition --mode "HD 1080p50" --duration 2
  tessary add name.composition Rectangle title=Bar x=120 y=80 width=1096 height=152 Color=#1A58C4
  tessary add name.composition Text title=Name x=156 y=116 width=1024 height=80 fields=Text \
    Text="Harbour Master" Font_Name="Inter Display Bold 66"
  tessary key name.composition Bar width 0=0 0.4=1096 1.6=1096 2=0
  tessary key name.composition Name opacity 0.4=0 0.64=1 1.4=1 1.6=0
  tessary stop name.composition 1 Out
  tessary set name.composition . poster=1
  tessary export name.composition name.qtz
  tessary render name.qtz -o name.png --from 1 --set "Name_Text=Chief Engineer"

Exit status: 0 done, 1 done with findings, 2 wrong usage, 3 input unreadable, 4 output failed or
document held by others, 5 files of the program missing, 70 internal error, 130 stopped by Ctrl+C
or SIGTERM.)";

ExitStatus runCommand(const QStringList& arguments) {
  if (arguments.isEmpty()) {
    Console::error(QStringLiteral("no command given; see tessary --help"));
    return ExitStatus::Usage;
  }
  const QString& command = arguments.first();
  const QStringList rest = arguments.mid(1);
  if (command == QLatin1String("--help") || command == QLatin1String("-h") ||
      command == QLatin1String("help")) {
    const QString subject = rest.value(0);
    if (!subject.isEmpty() && !subject.startsWith(u'-') && subject != QLatin1String("help"))
      return runCommand({subject, QStringLiteral("--help")});
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
  if (command == QLatin1String("patches")) return InfoCommand::runPatches(rest);
  if (command == QLatin1String("batch")) return BatchCommand::run(rest);
  if (const EditCommand* edit = EditCommands::named(command)) return EditCommands::run(*edit, rest);
  Console::error(QStringLiteral("there is no command '%1'; see tessary --help").arg(command));
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
