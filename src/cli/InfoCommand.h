#pragma once

#include <memory>

#include "cli/CommandOptions.h"

namespace cli {

/// `tessary info`: what a composition file or a graphic's source holds. `tessary patches`: what the
/// runtime knows.
class InfoCommand {
 public:
  [[nodiscard]] static std::unique_ptr<CommandOptions> syntax();
  [[nodiscard]] static ExitStatus run(const QStringList& arguments);
  [[nodiscard]] static std::unique_ptr<CommandOptions> patchesSyntax();
  [[nodiscard]] static ExitStatus runPatches(const QStringList& arguments);
};

}  // namespace cli
