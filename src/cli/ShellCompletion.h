#pragma once

#include <QString>

namespace cli {

/// Completion scripts, made from the table of commands.
class ShellCompletion {
 public:
  /// For "bash", "zsh" or "fish", without a line break at its end; null for other shells.
  [[nodiscard]] static QString script(const QString& shell);
};

}  // namespace cli
