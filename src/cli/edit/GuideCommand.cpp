#include "cli/edit/AttributeText.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"

namespace cli {

namespace {

const QString removeOption = QStringLiteral("remove");

void addOptions(CommandOptions& options) {
  options.flag(removeOption, QStringLiteral("takes the guide line there away"));
}

EditCommand::Done run(EditCall& call) {
  const QString& axis = call.words[0];
  const bool horizontal = axis == QLatin1String("y");
  if (!horizontal && axis != QLatin1String("x"))
    return misused(QStringLiteral("a guide line is one of x or y, not '%1'").arg(axis));
  const auto position = AttributeText::number(axis, call.words[1]);
  if (!position) return tl::unexpected(position.error());
  model::Composition& composition = call.document->composition();
  if (!call.options.isSet(removeOption)) {
    composition.addRulerAtPosition(*position, horizontal);
    return {};
  }
  for (model::Ruler* ruler : composition.rulers().list())
    if (ruler->horizontal() == horizontal && std::abs(ruler->position() - *position) < 0.01) {
      composition.removeRuler(*ruler);
      return {};
    }
  return misused(QStringLiteral("there is no guide line at %1 %2").arg(axis, call.words[1]));
}

}  // namespace

EditCommand guideCommand() {
  return {QStringLiteral("guide"),
          QStringLiteral("DOC x|y POSITION [--remove]"),
          QStringLiteral("Adds a guide line to the canvas: an upright one at x, a level one at y, "
                         "in pixels from the lower left."),
          2,
          2,
          run,
          EditCommand::Document::Changed,
          addOptions};
}

}  // namespace cli
