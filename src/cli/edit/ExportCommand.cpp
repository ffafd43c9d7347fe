#include "cli/DocumentLoader.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"

namespace cli {

namespace {

const QString backgroundOption = QStringLiteral("background");

void addOptions(CommandOptions& options) {
  options.flag(backgroundOption, QStringLiteral("with the graphic's background"));
}

EditCommand::Done run(EditCall& call) {
  const auto done = DocumentLoader::exportDocument(*call.document->document, call.words[0],
                                                   call.options.isSet(backgroundOption));
  if (!done) return tl::unexpected(LoadFailure{ExitStatus::OutputFailed, done.error()});
  return {};
}

}  // namespace

EditCommand exportCommand() {
  return {QStringLiteral("export"),
          QStringLiteral("DOC OUT.qtz [--background]"),
          QStringLiteral("Writes a document as one playout composition whose published keys a "
                         "playout system fills in."),
          1,
          1,
          run,
          EditCommand::Document::Read,
          addOptions};
}

}  // namespace cli
