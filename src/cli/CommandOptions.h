#pragma once

#include <QCommandLineParser>
#include <functional>
#include <optional>

#include "cli/LoadFailure.h"

namespace cli {

/// The options of one command: parsing, --help and the usage error, the same way for all commands.
class CommandOptions {
 public:
  /// `usage` is what follows "tessary ", `about` the sentence below it.
  CommandOptions(QString usage, QString about);

  /// One option, to describe it.
  struct Option {
    QStringList names;  ///< without dashes
    QString valueName;  ///< null where it takes none
    QString about;
    QStringList choices;  ///< all that it takes; empty where that is open

    /// "-o, --output OUT"
    [[nodiscard]] QString spelling() const;
  };

  CommandOptions(const CommandOptions&) = delete;
  CommandOptions& operator=(const CommandOptions&) = delete;

  void flag(const QString& name, const QString& about);
  void value(const QStringList& names, const QString& valueName, const QString& about);
  /// An option that takes the next two words, "--at T KEY=VALUE".
  void pair(const QString& name, const QString& valueNames, const QString& about);

  /// The values that an option which was named takes; for shells, which offer them.
  void choices(const QString& name, const QStringList& values);

  /// Nothing when the command may go on; else the status to end with (help was asked for, or the
  /// call is wrong, which has been reported). Takes exactly `positional` arguments.
  [[nodiscard]] std::optional<ExitStatus> parse(const QStringList& arguments, int positional);
  /// The same for a command that takes from `fewest` to `most` arguments.
  [[nodiscard]] std::optional<ExitStatus> parse(const QStringList& arguments, int fewest, int most);
  /// The same for a command that takes one file name or more.
  [[nodiscard]] std::optional<ExitStatus> parseFiles(const QStringList& arguments);
  /// Says on its own why the call is wrong, nothing else: neither help nor a message.
  [[nodiscard]] tl::expected<void, LoadFailure> read(const QStringList& arguments);
  [[nodiscard]] const QString& usage() const { return m_usage; }
  [[nodiscard]] const QString& about() const { return m_about; }
  [[nodiscard]] const QList<Option>& options() const { return m_options; }
  void printHelp() const;

  [[nodiscard]] QStringList positionals() const;
  [[nodiscard]] QString positional(int index) const { return positionals()[index]; }
  [[nodiscard]] bool isSet(const QString& name) const { return m_parser.isSet(name); }
  [[nodiscard]] QString text(const QString& name) const { return m_parser.value(name); }
  [[nodiscard]] QStringList texts(const QString& name) const { return m_parser.values(name); }
  /// Both words of each use of a pair, in order; the second is empty where it was left out.
  [[nodiscard]] std::vector<std::pair<QString, QString>> pairs(const QString& name) const;

 private:
  /// `wrongCount` says what is wrong with a number of file names, null when nothing is.
  [[nodiscard]] std::optional<ExitStatus> parse(
      const QStringList& arguments, const std::function<QString(qsizetype)>& wrongCount);
  [[nodiscard]] QStringList withJoinedPairs(const QStringList& arguments) const;
  QString m_usage;
  QString m_about;
  QList<Option> m_options;
  QStringList m_pairs;  ///< with their dashes
  QCommandLineParser m_parser;
};

}  // namespace cli
