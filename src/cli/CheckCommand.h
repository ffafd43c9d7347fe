#pragma once

#include <QStringList>

#include "cli/ExitStatus.h"

namespace cli {

/// `tessary check`: what in composition files cannot work as meant.
class CheckCommand {
 public:
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
