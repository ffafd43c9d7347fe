#include "cli/edit/EditCommand.h"

namespace cli {

std::unique_ptr<CommandOptions> EditCommand::syntax() const {
  auto options = std::make_unique<CommandOptions>(name + u' ' + usage, about);
  if (addOptions) addOptions(*options);
  return options;
}

}  // namespace cli
