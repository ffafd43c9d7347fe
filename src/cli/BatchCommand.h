#pragma once

#include <memory>

#include "cli/CommandOptions.h"

namespace cli {

/// `tessary batch`: editing commands from a script.
class BatchCommand {
 public:
  [[nodiscard]] static std::unique_ptr<CommandOptions> syntax();
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
