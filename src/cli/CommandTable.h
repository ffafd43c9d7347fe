#pragma once

#include <QList>
#include <functional>
#include <memory>

#include "cli/CommandOptions.h"

namespace cli {

/// A command of the program.
struct Command {
  QString name;
  std::function<std::unique_ptr<CommandOptions>()> syntax;  ///< its options and help
  std::function<ExitStatus(const QStringList& arguments)> run;

  /// What it does in one line: the first sentence of its help, without the point at its end.
  [[nodiscard]] QString summary() const;
  [[nodiscard]] QList<CommandOptions::Option> options() const { return syntax()->options(); }
};

/// All commands: what the command line runs, and what manual and completion describe.
class CommandTable {
 public:
  [[nodiscard]] static const QList<Command>& all();
  /// None when there is no command of the name.
  [[nodiscard]] static const Command* named(const QString& name);
  [[nodiscard]] static QStringList names();
};

}  // namespace cli
