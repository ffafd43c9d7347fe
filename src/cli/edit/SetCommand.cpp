#include "cli/edit/ComponentSettings.h"
#include "cli/edit/ComponentTarget.h"
#include "cli/edit/DocumentSettings.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"

namespace cli {

namespace {

template <typename Settings>
EditCommand::Done apply(Settings& settings, const QStringList& words) {
  for (const QString& word : words) {
    const auto assignment = Assignment::read(word);
    if (!assignment) return tl::unexpected(assignment.error());
    if (auto applied = settings.apply(*assignment); !applied) return applied;
  }
  return {};
}

EditCommand::Done run(EditCall& call) {
  const QStringList words = call.words.mid(1);
  model::Composition& composition = call.document->composition();
  if (call.words[0] == QLatin1String(".")) {
    DocumentSettings settings(composition, call.folder);
    return apply(settings, words);
  }
  const auto component = ComponentTarget::component(composition, call.words[0]);
  if (!component) return tl::unexpected(component.error());
  ComponentSettings settings(**component, call.folder);
  auto done = apply(settings, words).and_then([&] { return settings.check(); });
  for (const QString& note : settings.notes()) call.session.addFinding(note);
  return done;
}

}  // namespace

EditCommand setCommand() {
  return {QStringLiteral("set"),
          QStringLiteral("DOC TARGET KEY=VALUE…"),
          QStringLiteral("Sets values. TARGET is the title of a component, #N for the N-th from "
                         "below, or . for the document.\nKEY is an input of the component by its "
                         "key or label, or one of:\n\n") +
              ComponentSettings::help() + QStringLiteral("\n\nKEY of a document is one of:\n\n") +
              DocumentSettings::help() +
              QStringLiteral(
                  "\n\nVALUE by the type of the input: a number; yes or no; a text, or @FILE for "
                  "the text in a file; a colour\nas #RRGGBB or #RRGGBBAA; the title of a menu's "
                  "item or its number from 0 on; @FILE for a picture;\na path, or @FILE; a font as "
                  "\"NAME SIZE\". A text that begins with @ is written with @@."),
          2,
          -1,
          run};
}

}  // namespace cli
