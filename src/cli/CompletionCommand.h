#pragma once

#include <memory>

#include "cli/CommandOptions.h"

namespace cli {

/// `tessary completion`: the script with which a shell completes commands, options and files.
class CompletionCommand {
 public:
  [[nodiscard]] static std::unique_ptr<CommandOptions> syntax();
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
