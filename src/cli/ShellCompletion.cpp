#include "cli/ShellCompletion.h"

#include "cli/CommandTable.h"

namespace cli {

namespace {

using Option = CommandOptions::Option;

/// In single quotes, for any of the shells.
QString quoted(QString text) {
  return u'\'' + text.replace(u'\'', QStringLiteral("'\\''")) + u'\'';
}

QStringList dashed(const Option& option) {
  QStringList words;
  for (const QString& name : option.names)
    words.append((name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name);
  return words;
}

QString joined(const QStringList& words) {
  return words.join(u' ');
}

QStringList allWithHelp() {
  return CommandTable::names() +
         QStringList{QStringLiteral("help"), QStringLiteral("--help"), QStringLiteral("--version")};
}

// bash: one function; compgen offers folders, which documents are, beside files of known endings.

constexpr const char* bashBegin = R"(# Completion of tessary and tessary-editor for bash.
_tessary_files() {
  compopt -o filenames 2>/dev/null
  local IFS=$'\n'
  COMPREPLY+=($(compgen -d -- "$cur"))
  local ending
  for ending in "$@"; do COMPREPLY+=($(compgen -f -X "!*.$ending" -- "$cur")); done
}
_tessary() {
  local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]}
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    COMPREPLY=($(compgen -W "%1" -- "$cur"))
    case $cur in -*) ;; *) _tessary_files qtz ;; esac
    return
  fi
  case "$command $previous" in
)";

constexpr const char* bashMiddle =
    R"(    "completion completion") COMPREPLY=($(compgen -W "bash zsh fish" -- "$cur")); return ;;
    "help help") COMPREPLY=($(compgen -W "%1" -- "$cur")); return ;;
  esac
  case "$command $cur" in
)";

constexpr const char* bashEnd = R"(  esac
  case $command in
    completion | manual | patches | help | --*) ;;
    *) _tessary_files qtz json tessary png jpg jpeg tif tiff psd mov mp4 webm mkv ;;
  esac
}
_tessary_editor() {
  local cur=${COMP_WORDS[COMP_CWORD]}
  COMPREPLY=()
  case $cur in
    -*) COMPREPLY=($(compgen -W "--help --version" -- "$cur")) ;;
    *) _tessary_files qtz ;;
  esac
}
complete -F _tessary tessary
complete -F _tessary_editor tessary-editor)";

QString bash() {
  QString text = QString::fromUtf8(bashBegin).arg(joined(allWithHelp()));
  for (const Command& command : CommandTable::all())
    for (const Option& option : command.options()) {
      if (option.valueName.isEmpty()) continue;
      QStringList patterns;
      for (const QString& word : dashed(option))
        patterns.append(QStringLiteral("\"%1 %2\"").arg(command.name, word));
      const QString offer = option.choices.isEmpty()
                                ? QStringLiteral("_tessary_files '*'")
                                : QStringLiteral("COMPREPLY=($(compgen -W \"%1\" -- \"$cur\"))")
                                      .arg(joined(option.choices));
      text += QStringLiteral("    %1) %2; return ;;\n")
                  .arg(patterns.join(QStringLiteral(" | ")), offer);
    }
  text += QString::fromUtf8(bashMiddle).arg(joined(CommandTable::names()));
  for (const Command& command : CommandTable::all()) {
    QStringList words;
    for (const Option& option : command.options()) words += dashed(option);
    text +=
        QStringLiteral("    \"%1 -\"*) COMPREPLY=($(compgen -W \"%2\" -- \"$cur\")); return ;;\n")
            .arg(command.name, joined(words));
  }
  return text + QString::fromUtf8(bashEnd);
}

// zsh: _arguments knows options with their texts.

QString bracketed(QString text) {
  return text.replace(u'[', QStringLiteral("\\["))
      .replace(u']', QStringLiteral("\\]"))
      .replace(u':', QStringLiteral("\\:"));
}

QString zshOption(const Option& option) {
  QString rest = u'[' + bracketed(option.about) + u']';
  if (!option.valueName.isEmpty()) {
    rest += u':' + bracketed(option.valueName) + u':';
    rest += option.choices.isEmpty() ? QStringLiteral("_files")
                                     : QStringLiteral("(%1)").arg(joined(option.choices));
  }
  QStringList specs;
  for (const QString& word : dashed(option)) specs.append(quoted(u'*' + word + rest));
  return joined(specs);
}

QString zsh() {
  QString text = QStringLiteral(
      "#compdef tessary tessary-editor\n"
      "# Completion of tessary and tessary-editor for zsh.\n"
      "_tessary() {\n"
      "  if [[ $service == tessary-editor ]]; then\n"
      "    _arguments '--help[this text]' '--version[the version]' '*:file:_files'\n"
      "    return\n"
      "  fi\n"
      "  local -a commands\n"
      "  commands=(\n");
  for (const Command& command : CommandTable::all())
    text += QStringLiteral("    %1\n").arg(quoted(command.name + u':' + command.summary()));
  text += QStringLiteral(
      "    'help:all about a command'\n"
      "  )\n"
      "  if (( CURRENT == 2 )); then\n"
      "    _describe -t commands command commands\n"
      "    _arguments '--help[this text]' '--version[the version]'\n"
      "    _files -g '*.(qtz|composition)(-.,-/)'\n"
      "    return\n"
      "  fi\n"
      "  shift words\n"
      "  (( CURRENT-- ))\n"
      "  case $words[1] in\n"
      "    help) _describe -t commands command commands ;;\n"
      "    completion) _values shell bash zsh fish ;;\n");
  for (const Command& command : CommandTable::all()) {
    if (command.name == QLatin1String("completion")) continue;
    QStringList specs;
    for (const Option& option : command.options()) specs.append(zshOption(option));
    text += QStringLiteral("    %1) _arguments %2 '*:file:_files' ;;\n")
                .arg(command.name, joined(specs));
  }
  return text + QStringLiteral("  esac\n}\n_tessary \"$@\"");
}

QString fishOption(const QString& command, const Option& option) {
  QString line =
      QStringLiteral("complete -c tessary -n '__fish_seen_subcommand_from %1'").arg(command);
  for (const QString& name : option.names)
    line += (name.size() == 1 ? QStringLiteral(" -s ") : QStringLiteral(" -l ")) + name;
  if (!option.valueName.isEmpty())
    line += option.choices.isEmpty() ? QStringLiteral(" -r")
                                     : QStringLiteral(" -x -a ") + quoted(joined(option.choices));
  return line + QStringLiteral(" -d ") + quoted(option.about) + u'\n';
}

QString fish() {
  QString text = QStringLiteral(
      "# Completion of tessary and tessary-editor for fish.\n"
      "complete -c tessary -n __fish_use_subcommand -l version -d 'the version'\n"
      "complete -c tessary -n __fish_use_subcommand -l help -d 'all commands'\n"
      "complete -c tessary-editor -l version -d 'the version'\n"
      "complete -c tessary-editor -l help -d 'the options'\n"
      "complete -c tessary -n '__fish_seen_subcommand_from completion' -x -a 'bash zsh fish'\n");
  text += QStringLiteral("complete -c tessary -n '__fish_seen_subcommand_from help' -x -a %1\n")
              .arg(quoted(joined(CommandTable::names())));
  for (const Command& command : CommandTable::all()) {
    text += QStringLiteral("complete -c tessary -n __fish_use_subcommand -a %1 -d %2\n")
                .arg(command.name, quoted(command.summary()));
    for (const Option& option : command.options()) text += fishOption(command.name, option);
  }
  text.chop(1);
  return text;
}

}  // namespace

QString ShellCompletion::script(const QString& shell) {
  if (shell == QLatin1String("bash")) return bash();
  if (shell == QLatin1String("zsh")) return zsh();
  if (shell == QLatin1String("fish")) return fish();
  return {};
}

}  // namespace cli
