#pragma once

#include <memory>

#include "cli/CommandOptions.h"

namespace cli {

/// `tessary check`: what in composition files cannot work as meant.
class CheckCommand {
 public:
  [[nodiscard]] static std::unique_ptr<CommandOptions> syntax();
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
