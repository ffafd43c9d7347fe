#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"
#include "cli/edit/TimeText.h"

namespace cli {

namespace {

const QString removeOption = QStringLiteral("remove");

void addOptions(CommandOptions& options) {
  options.flag(removeOption, QStringLiteral("takes the stop frame at the time away"));
}

EditCommand::Done run(EditCall& call) {
  model::Composition& composition = call.document->composition();
  const QString& text = call.words[0];
  const auto time = secondsFromText(text, composition);
  if (!time || *time > composition.duration())
    return misused(QStringLiteral("'%1' is no time within the duration").arg(text));
  model::StopFrame* present = composition.stopFrameAtTimepoint(*time);
  if (call.options.isSet(removeOption)) {
    if (!present) return misused(QStringLiteral("there is no stop frame at %1").arg(text));
    composition.removeStopFrame(*present);
  } else if (present) {
    present->setTriggerInformation(call.words.value(1));
  } else {
    composition.addStopFrame(*time, call.words.value(1));
  }
  return {};
}

}  // namespace

EditCommand stopCommand() {
  return {
      QStringLiteral("stop"),
      QStringLiteral("DOC TIME [TEXT] [--remove]"),
      QStringLiteral("Adds a stop frame, at which playing waits for a trigger. TEXT says what "
                     "the trigger does; of a stop\nframe that is there already it is replaced."),
      1,
      2,
      run,
      EditCommand::Document::Changed,
      addOptions};
}

}  // namespace cli
