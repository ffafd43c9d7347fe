#include "cli/edit/ComponentTarget.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"

namespace cli {

namespace {

/// By how many levels, out of `count`.
std::optional<qsizetype> stepFrom(const QString& text, qsizetype count) {
  if (text == QLatin1String("front")) return count;
  if (text == QLatin1String("back")) return -count;
  bool isNumber = false;
  const qsizetype step = text.toInt(&isNumber);
  if (!isNumber || step == 0 || !(text.startsWith(u'+') || step < 0)) return {};
  return std::clamp(step, -count, count);
}

EditCommand::Done run(EditCall& call) {
  model::Composition& composition = call.document->composition();
  const auto component = ComponentTarget::component(composition, call.words[0]);
  if (!component) return tl::unexpected(component.error());
  const auto step = stepFrom(call.words[1], composition.componentArray().size());
  if (!step)
    return misused(
        QStringLiteral("a component goes front, back, +N or -N, not '%1'").arg(call.words[1]));
  composition.moveComponents({*component}, *step);
  return {};
}

}  // namespace

EditCommand orderCommand() {
  return {
      QStringLiteral("order"),
      QStringLiteral("DOC TARGET front|back|+N|-N"),
      QStringLiteral("Moves a component above or below others: to the front, to the back, or by "
                     "N levels as far as there\nis room."),
      2,
      2,
      run};
}

}  // namespace cli
