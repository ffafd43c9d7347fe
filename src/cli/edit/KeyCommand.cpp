#include "cli/edit/Assignment.h"
#include "cli/edit/AttributeText.h"
#include "cli/edit/ComponentTarget.h"
#include "cli/edit/EditCommands.h"
#include "cli/edit/EditSession.h"
#include "cli/edit/TimeText.h"

namespace cli {

namespace {

using model::Attribute;

const QString removeOption = QStringLiteral("remove");
const QString offOption = QStringLiteral("off");

void addOptions(CommandOptions& options) {
  options.value({removeOption}, QStringLiteral("TIME"),
                QStringLiteral("takes the key frame at the time away; may be repeated"));
  options.flag(offOption, QStringLiteral("ends the animation; the value at time 0 stays"));
}

tl::expected<double, LoadFailure> timeFrom(const QString& text, const EditCall& call) {
  if (const auto time = secondsFromText(text, call.document->composition())) return *time;
  return misused(QStringLiteral("'%1' is no time in seconds and no time code").arg(text));
}

EditCommand::Done remove(Attribute& attribute, const QString& text, const EditCall& call) {
  const auto time = timeFrom(text, call);
  if (!time) return tl::unexpected(time.error());
  if (!attribute.animateable() || !attribute.hasKeyframeAtTimePoint(*time))
    return misused(QStringLiteral("'%1' has no key frame at %2").arg(attribute.label(), text));
  attribute.deleteTimepoint(*time);
  return {};
}

EditCommand::Done add(Attribute& attribute, const QString& word, const EditCall& call) {
  const auto assignment = Assignment::read(word, "TIME=VALUE");
  if (!assignment) return tl::unexpected(assignment.error());
  const auto time = timeFrom(assignment->key, call);
  if (!time) return tl::unexpected(time.error());
  auto value = AttributeText(call.folder).value(attribute, assignment->value);
  if (!value) return tl::unexpected(value.error());
  attribute.addTimepoint(*time, std::move(*value));
  return {};
}

EditCommand::Done run(EditCall& call) {
  const auto component = ComponentTarget::component(call.document->composition(), call.words[0]);
  if (!component) return tl::unexpected(component.error());
  const auto found = ComponentTarget::attribute(**component, call.words[1]);
  if (!found) return tl::unexpected(found.error());
  Attribute& attribute = **found;
  if (!attribute.animationPossible())
    return misused(QStringLiteral("'%1' cannot be animated").arg(call.words[1]));
  const QStringList frames = call.words.mid(2);
  const QStringList removed = call.options.texts(removeOption);
  const bool off = call.options.isSet(offOption);
  if (frames.isEmpty() && removed.isEmpty() && !off)
    return misused(QStringLiteral("TIME=VALUE, --remove or --off is needed"));
  if (off && !frames.isEmpty()) return misused(QStringLiteral("--off takes no key frames"));
  for (const QString& time : removed)
    if (auto done = remove(attribute, time, call); !done) return done;
  for (const QString& frame : frames)
    if (auto done = add(attribute, frame, call); !done) return done;
  if (off) attribute.setAnimateable(false);
  if (attribute.lostPermissionToAnimation())
    call.session.addFinding(QStringLiteral("%1: '%2' was a field; now that it is animated it is "
                                           "none any more")
                                .arg((*component)->title(), attribute.label()));
  return {};
}

}  // namespace

EditCommand keyCommand() {
  return {QStringLiteral("key"),
          QStringLiteral("DOC TARGET KEY [TIME=VALUE…] [--remove TIME] [--off]"),
          QStringLiteral("Animates a value by key frames. KEY is an input by its key or label, or "
                         "x, y, width, height, rotation\nor opacity. TIME is in seconds, or a time "
                         "code with frames at its end (0:20). A key frame at a time\nthat has one "
                         "replaces it."),
          2,
          -1,
          run,
          EditCommand::Document::Changed,
          addOptions};
}

}  // namespace cli
