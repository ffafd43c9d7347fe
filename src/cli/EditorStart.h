#pragma once

#include <QStringList>
#include <optional>

#include "cli/ExitStatus.h"

namespace cli {

/// Files in the place of a command are for the editor, which is a program of its own so that this
/// one needs no widgets.
class EditorStart {
 public:
  /// What the editor is to be called with: absolute paths, behind its options. Nothing when the
  /// arguments begin with a command, an option or with what is no document.
  [[nodiscard]] static std::optional<QStringList> arguments(const QStringList& arguments);
  /// Becomes the editor. Returns only when it could not be started, which has been reported.
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
