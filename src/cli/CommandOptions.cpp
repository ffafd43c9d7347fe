#include "cli/CommandOptions.h"

#include <QRegularExpression>

#include "cli/Console.h"

namespace cli {

namespace {
/// Joins the words of a pair into the one value that the parser knows; no argument has it.
constexpr QChar pairSeparator(0x1f);
/// Before negative numbers, so that the parser does not take them for options.
constexpr QChar numberMark(0x1e);

QString marked(const QString& word) {
  static const QRegularExpression number(QStringLiteral("^-[0-9.]"));
  return number.match(word).hasMatch() ? numberMark + word : word;
}
}  // namespace

CommandOptions::CommandOptions(QString usage, QString about)
    : m_usage(std::move(usage)), m_about(std::move(about)) {
  flag(QStringLiteral("help"), QStringLiteral("this text"));
}

void CommandOptions::flag(const QString& name, const QString& about) {
  m_parser.addOption(QCommandLineOption(name, about));
  m_options.append({{name}, {}, about, {}});
}

void CommandOptions::value(const QStringList& names, const QString& valueName,
                           const QString& about) {
  m_parser.addOption(QCommandLineOption(names, about, valueName));
  m_options.append({names, valueName, about, {}});
}

void CommandOptions::choices(const QString& name, const QStringList& values) {
  for (Option& option : m_options)
    if (option.names.contains(name)) option.choices = values;
}

void CommandOptions::pair(const QString& name, const QString& valueNames, const QString& about) {
  value({name}, valueNames, about);
  m_pairs.append(QStringLiteral("--") + name);
}

QStringList CommandOptions::withJoinedPairs(const QStringList& arguments) const {
  QStringList joined;
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    joined.append(arguments[i]);
    const bool isPair = m_pairs.contains(arguments[i]);
    if (isPair && i + 1 < arguments.size()) joined.append(arguments[++i]);
    if ((isPair || m_pairs.contains(arguments[i].section(QLatin1Char('='), 0, 0))) &&
        i + 1 < arguments.size())
      joined.last() += pairSeparator + arguments[++i];
  }
  return joined;
}

std::vector<std::pair<QString, QString>> CommandOptions::pairs(const QString& name) const {
  std::vector<std::pair<QString, QString>> all;
  for (const QString& words : texts(name)) {
    const qsizetype end = words.indexOf(pairSeparator);
    all.emplace_back(words.left(end), end < 0 ? QString() : words.mid(end + 1));
  }
  return all;
}

std::optional<ExitStatus> CommandOptions::parse(const QStringList& arguments, int positional) {
  return parse(arguments, [positional](qsizetype given) {
    if (given == positional) return QString();
    return positional == 1 ? QStringLiteral("one file name is needed, %1 were given").arg(given)
                           : QStringLiteral("%1 file names are needed, %2 were given")
                                 .arg(positional)
                                 .arg(given);
  });
}

std::optional<ExitStatus> CommandOptions::parse(const QStringList& arguments, int fewest,
                                                int most) {
  return parse(arguments, [fewest, most](qsizetype given) {
    if (given < fewest) return QStringLiteral("something is missing");
    return given > most ? QStringLiteral("there are too many arguments") : QString();
  });
}

std::optional<ExitStatus> CommandOptions::parseFiles(const QStringList& arguments) {
  return parse(arguments, [](qsizetype given) {
    return given > 0 ? QString() : QStringLiteral("at least one file name is needed");
  });
}

QStringList CommandOptions::positionals() const {
  QStringList words = m_parser.positionalArguments();
  for (QString& word : words)
    if (word.startsWith(numberMark)) word.remove(0, 1);
  return words;
}

tl::expected<void, LoadFailure> CommandOptions::read(const QStringList& arguments) {
  QStringList words{QStringLiteral("tessary")};
  for (const QString& word : withJoinedPairs(arguments)) {
    const bool isValue = words.last().startsWith(u'-') && !words.last().contains(u'=');
    words.append(isValue ? word : marked(word));
  }
  if (!m_parser.parse(words)) return misused(m_parser.errorText());
  return {};
}

std::optional<ExitStatus> CommandOptions::parse(
    const QStringList& arguments, const std::function<QString(qsizetype)>& wrongCount) {
  const bool ok =
      m_parser.parse(QStringList(QStringLiteral("tessary")) + withJoinedPairs(arguments));
  if (arguments.contains(QLatin1String("--help"))) {
    printHelp();
    return ExitStatus::Ok;
  }
  const QString wrong =
      ok ? wrongCount(m_parser.positionalArguments().size()) : m_parser.errorText();
  if (wrong.isEmpty()) return {};
  Console::error(wrong);
  Console::error(QStringLiteral("usage: tessary ") + m_usage);
  return ExitStatus::Usage;
}

QString CommandOptions::Option::spelling() const {
  QStringList shown;
  for (const QString& name : names)
    shown.append((name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name);
  const QString all = shown.join(QStringLiteral(", "));
  return valueName.isEmpty() ? all : all + u' ' + valueName;
}

void CommandOptions::printHelp() const {
  QStringList lines;
  for (const Option& option : m_options)
    lines.append(QStringLiteral("  %1 %2").arg(option.spelling(), -25).arg(option.about));
  Console::print(QStringLiteral("Usage: tessary %1\n\n%2\n\nOptions:\n%3")
                     .arg(m_usage, m_about, lines.join(QLatin1Char('\n'))));
}

}  // namespace cli
