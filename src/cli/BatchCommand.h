#pragma once

#include <QStringList>

#include "cli/ExitStatus.h"

namespace cli {

/// `tessary batch`: editing commands from a script.
class BatchCommand {
 public:
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
