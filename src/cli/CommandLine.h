#pragma once

#include <QStringList>

#include "cli/ExitStatus.h"

namespace cli {

/// The program's command line: finds the command and runs it.
class CommandLine {
 public:
  /// `arguments` without the program's name. Never throws; whatever escapes a command is reported
  /// as an internal error.
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
