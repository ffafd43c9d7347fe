#include "cli/ManualCommand.h"

#include "cli/CommandTable.h"
#include "cli/Console.h"
#include "cli/ProgramHelp.h"

namespace cli {

namespace {

/// As troff shows it literally. A line must not begin with a point or an apostrophe.
QString escaped(QString text) {
  text.replace(u'\\', QStringLiteral("\\e")).replace(u'-', QStringLiteral("\\-"));
  if (text.startsWith(u'.') || text.startsWith(u'\'')) text.prepend(QStringLiteral("\\&"));
  return text;
}

/// Running text: filled, with paragraphs at empty lines; indented lines stay as they are.
QString running(const QString& text) {
  QString page;
  bool literal = false;
  for (const QString& line : text.split(u'\n')) {
    const bool indented = line.startsWith(QLatin1String("  "));
    if (indented != literal) page += indented ? QStringLiteral(".nf\n") : QStringLiteral(".fi\n");
    literal = indented;
    page += line.isEmpty() ? QStringLiteral(".PP\n") : escaped(line) + u'\n';
  }
  return literal ? page + QStringLiteral(".fi\n") : page;
}

QString section(const Command& command) {
  const std::unique_ptr<CommandOptions> syntax = command.syntax();
  QString page = QStringLiteral(".SS %1\n.B tessary %2\n.PP\n%3")
                     .arg(command.name, escaped(syntax->usage()), running(syntax->about()));
  for (const CommandOptions::Option& option : syntax->options())
    page +=
        QStringLiteral(".TP\n.B %1\n%2\n").arg(escaped(option.spelling()), escaped(option.about));
  return page;
}

constexpr const char* begin = R"(.TH TESSARY 1 "" "Tessary %1" "User Commands"
.SH NAME
tessary \- make, check, play and export broadcast graphics
.SH SYNOPSIS
.B tessary
.I COMMAND
.RI [ OPTIONS ]
.br
.B tessary
.RB [ \-\- ]
.IR FILE \&...
.SH DESCRIPTION
A graphic is a document: a folder named NAME.composition. It is exported as one composition file
(.qtz), whose published inputs a playout system fills in on air. The commands make documents, change
them, and look at, check and play files of both kinds. None of them needs a display.
.PP
Files in the place of a command are opened in the editor, see
.BR tessary\-editor (1).
A file that is named like a command needs ./ before its name, or \-\- before it.
.SH COMMANDS
)";

constexpr const char* end = R"(.SH ENVIRONMENT
.TP
.B TESSARY_RESOURCES
The folder of the standard components and other files of the program, where that is not
.I share/tessary
beside the folder of the program.
.SH SEE ALSO
.BR tessary\-editor (1))";

QString manualPage() {
  QString page = QString::fromUtf8(begin).arg(QStringLiteral(TESSARY_VERSION));
  for (const Command& command : CommandTable::all()) page += section(command);
  page += QStringLiteral(".SH EXAMPLE\nA lower third, made, animated and played:\n") +
          running(ProgramHelp::example());
  page += QStringLiteral(".SH EXIT STATUS\n") + running(ProgramHelp::exitStatuses());
  return page + QString::fromUtf8(end);
}

}  // namespace

std::unique_ptr<CommandOptions> ManualCommand::syntax() {
  return std::make_unique<CommandOptions>(
      QStringLiteral("manual"),
      QStringLiteral("Prints the manual page in troff's language; man -l reads it. An installed "
                     "program has it in\nplace already: man tessary."));
}

ExitStatus ManualCommand::run(const QStringList& arguments) {
  if (const auto status = syntax()->parse(arguments, 0)) return *status;
  Console::print(manualPage());
  return ExitStatus::Ok;
}

}  // namespace cli
