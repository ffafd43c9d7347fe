#pragma once

#include <QStringList>

namespace app {

/// What the editor was called with.
struct EditorOptions {
  QStringList paths;  ///< as they were given
  bool wantsHelp = false;
  bool wantsVersion = false;
  bool exitsWhenShown = false;
  QString error;  ///< what is wrong with the call; null when nothing is

  /// `arguments` without the program's name and, but for help and version, without those of Qt.
  [[nodiscard]] static EditorOptions read(const QStringList& arguments);
  [[nodiscard]] static QString help();
};

}  // namespace app
