#pragma once

#include <QString>

namespace cli {

/// What the program says of itself as a whole.
class ProgramHelp {
 public:
  [[nodiscard]] static QString overview();  ///< the text of --help
  [[nodiscard]] static QString example();   ///< a worked example, indented lines
  [[nodiscard]] static QString exitStatuses();
};

}  // namespace cli
