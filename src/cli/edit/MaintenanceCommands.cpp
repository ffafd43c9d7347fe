#include "cli/Console.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"
#include "document/DocumentCommands.h"

namespace cli {

namespace {

using document::DocumentCommands;
using Command = model::CommandReport (DocumentCommands::*)();

/// These need to know where the document lies, so a new one is saved first.
template <Command command>
EditCommand::Done run(EditCall& call) {
  OpenDocument& open = *call.document;
  if (open.document->fileURL().isEmpty())
    if (auto saved = call.session.save(open); !saved) return saved;
  const model::CommandReport report = (DocumentCommands(*open.document).*command)();
  Console::print(report.title);
  if (!report.text.isEmpty()) Console::print(report.text);
  for (const QString& warning : open.document->saveWarnings()) call.session.addFinding(warning);
  return {};
}

}  // namespace

QList<EditCommand> maintenanceCommands() {
  const QString usage = QStringLiteral("DOC");
  return {{QStringLiteral("embed"), usage,
           QStringLiteral("Copies the files that a document uses into it, and saves it at once."),
           0, 0, run<&DocumentCommands::embedResources>},
          {QStringLiteral("relative"), usage,
           QStringLiteral("Makes the paths of the files that a document uses relative to it."), 0,
           0, run<&DocumentCommands::makePathsRelative>},
          {QStringLiteral("upgrade"), usage,
           QStringLiteral("Brings the standard components in a document up to date with those of "
                          "this program."),
           0, 0, run<&DocumentCommands::upgradeComposition>}};
}

}  // namespace cli
