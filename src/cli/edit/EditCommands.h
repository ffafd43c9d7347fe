#pragma once

#include <QList>

#include "cli/edit/EditCommand.h"

namespace cli {

/// All editing commands.
class EditCommands {
 public:
  [[nodiscard]] static const QList<EditCommand>& all();
  /// None when there is no command of the name.
  [[nodiscard]] static const EditCommand* named(const QString& name);
  /// Runs one command as the whole of a call of the program, and saves what it changed.
  [[nodiscard]] static ExitStatus run(const EditCommand& command, const QStringList& arguments);
};

// Each in the file of its name.
[[nodiscard]] EditCommand newCommand();
[[nodiscard]] EditCommand addCommand();
[[nodiscard]] EditCommand setCommand();
[[nodiscard]] EditCommand keyCommand();
[[nodiscard]] EditCommand stopCommand();
[[nodiscard]] EditCommand guideCommand();
[[nodiscard]] EditCommand removeCommand();
[[nodiscard]] EditCommand orderCommand();
[[nodiscard]] EditCommand thumbnailCommand();
[[nodiscard]] EditCommand valuesCommand();
[[nodiscard]] EditCommand exportCommand();
[[nodiscard]] QList<EditCommand> maintenanceCommands();

}  // namespace cli
