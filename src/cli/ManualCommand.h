#pragma once

#include <memory>

#include "cli/CommandOptions.h"

namespace cli {

/// `tessary manual`: the manual page, made from the help of the commands.
class ManualCommand {
 public:
  [[nodiscard]] static std::unique_ptr<CommandOptions> syntax();
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
};

}  // namespace cli
