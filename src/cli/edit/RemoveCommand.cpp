#include "cli/edit/ComponentTarget.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"

namespace cli {

namespace {

EditCommand::Done run(EditCall& call) {
  model::Composition& composition = call.document->composition();
  QList<model::QuartzComponent*> components;
  for (const QString& name : call.words) {
    const auto component = ComponentTarget::component(composition, name);
    if (!component) return tl::unexpected(component.error());
    if (!components.contains(*component)) components.append(*component);
  }
  composition.removeComponents(components);
  return {};
}

}  // namespace

EditCommand removeCommand() {
  return {QStringLiteral("remove"),
          QStringLiteral("DOC TARGET…"),
          QStringLiteral("Removes components, by title or as #N. Numbers are counted before any is "
                         "gone."),
          1,
          -1,
          run};
}

}  // namespace cli
