#include "cli/CompletionCommand.h"

#include "cli/Console.h"
#include "cli/ShellCompletion.h"

namespace cli {

std::unique_ptr<CommandOptions> CompletionCommand::syntax() {
  return std::make_unique<CommandOptions>(
      QStringLiteral("completion bash|zsh|fish"),
      QStringLiteral("Prints the script with which a shell completes commands, options and files. "
                     "An installed program\nhas it in place already."));
}

ExitStatus CompletionCommand::run(const QStringList& arguments) {
  const std::unique_ptr<CommandOptions> options = syntax();
  if (const auto status = options->parse(arguments, 1, 1)) return *status;
  const QString shell = options->positional(0);
  const QString script = ShellCompletion::script(shell);
  if (!script.isEmpty()) {
    Console::print(script);
    return ExitStatus::Ok;
  }
  Console::error(
      QStringLiteral("there is no completion for '%1', only for bash, zsh and fish").arg(shell));
  return ExitStatus::Usage;
}

}  // namespace cli
