#pragma once

#include <QString>
#include <QStringList>

#include "foundation/Result.h"

namespace cli {

/// Standard output and standard error as UTF-8 text.
class Console {
 public:
  static void print(const QString& text);  ///< to standard output, with a line break
  static void error(const QString& text);  ///< to standard error, as "tessary: text"
  static void error(const foundation::Error& error);
  /// One line a finding, marked as such.
  static void findings(const QString& file, const QStringList& findings);
  [[nodiscard]] static bool errorIsTerminal();
};

}  // namespace cli
