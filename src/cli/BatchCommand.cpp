#include "cli/BatchCommand.h"

#include <QDir>
#include <QFile>

#include "cli/CommandOptions.h"
#include "cli/Console.h"
#include "cli/edit/Assignment.h"
#include "cli/edit/BatchScript.h"

namespace cli {

namespace {

const QString letOption = QStringLiteral("let");
const QString usage = QStringLiteral("batch [FILE | -] [--let NAME=VALUE]");
const QString about = QStringLiteral(
    "Runs the editing commands of a script, one a line; without a file those of standard input. "
    "Documents stay\nopen and are saved once at the end. An error names its line; then nothing is "
    "saved that was not saved before.\n\n"
    "A document need not be named where the one before is meant. Further lines of a script:\n\n"
    "  open DOC              the document that the following lines mean\n"
    "  let NAME WORD…        $NAME and ${NAME} stand for the words; one from --let stays\n"
    "  include FILE          the lines of another script, relative to this one\n"
    "  save                  saves everything now\n\n"
    "Words are quoted as in a shell. A line that ends in \\ goes on in the next; # begins a "
    "comment, followed by\na blank where it is not first in its line. Names behind @, of .qtz "
    "files "
    "and of pictures are relative to the\nscript, those of documents and outputs to the current "
    "folder.");

tl::expected<void, LoadFailure> runScript(const CommandOptions& options, EditSession& session) {
  BatchScript script(session);
  for (const QString& text : options.texts(letOption)) {
    const auto assignment = Assignment::read(text, "NAME=VALUE");
    if (!assignment) return tl::unexpected(assignment.error());
    if (!isScriptName(assignment->key))
      return misused(QStringLiteral("'%1' is no name").arg(assignment->key));
    script.fix(assignment->key, assignment->value);
  }
  const QString file = options.positionals().value(0, QStringLiteral("-"));
  if (file != QLatin1String("-")) return script.runFile(file);
  QFile input;
  if (!input.open(stdin, QIODevice::ReadOnly))
    return failed(ExitStatus::InputUnreadable, input.errorString(), QStringLiteral("-"));
  return script.run(input, QStringLiteral("-"), QDir::currentPath());
}

}  // namespace

std::unique_ptr<CommandOptions> BatchCommand::syntax() {
  auto options = std::make_unique<CommandOptions>(usage, about);
  options->value({letOption}, QStringLiteral("NAME=VALUE"),
                 QStringLiteral("what $NAME stands for, whatever the script says"));
  return options;
}

ExitStatus BatchCommand::run(const QStringList& arguments) {
  const std::unique_ptr<CommandOptions> made = syntax();
  CommandOptions& options = *made;
  if (const auto status = options.parse(arguments, 0, 1)) return *status;
  EditSession session;
  const auto done = runScript(options, session).and_then([&] { return session.save(); });
  session.printFindings();
  if (done) return session.hasFindings() ? ExitStatus::Findings : ExitStatus::Ok;
  Console::error(done.error().error);
  return done.error().status;
}

}  // namespace cli
