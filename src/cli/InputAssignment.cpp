#include "cli/InputAssignment.h"

#include <QDir>

namespace cli {

using playout::InputValue;
using playout::InputValues;
using playout::ValueFailure;

LoadFailure InputAssignment::told(const ValueFailure& failure) {
  const bool isWrong = failure.kind == ValueFailure::Kind::Wrong;
  return {isWrong ? ExitStatus::Usage : ExitStatus::InputUnreadable, failure.error};
}

tl::expected<InputValue, LoadFailure> InputAssignment::read(
    const QString& assignment, const runtime::CompositionRenderer& renderer,
    const QString& option) {
  const qsizetype equals = assignment.indexOf(QLatin1Char('='));
  if (equals < 1)
    return misused(QStringLiteral("%1 takes KEY=VALUE, not '%2'").arg(option, assignment));
  const QString key = assignment.left(equals);
  return InputValues::inputNamed(key, renderer)
      .and_then([&](const auto& port) {
        return InputValues::fromText(assignment.mid(equals + 1), port, QDir::currentPath());
      })
      .map([&key](const runtime::Value& value) {
        return InputValue{key, value};
      })
      .map_error(told);
}

tl::expected<render::ValueSchedule, LoadFailure> InputAssignment::schedule(
    const std::vector<RenderOptions::Update>& updates,
    const runtime::CompositionRenderer& renderer) {
  std::vector<render::ValueSchedule::Entry> entries;
  for (const RenderOptions::Update& update : updates) {
    auto input = read(update.assignment, renderer, QStringLiteral("--set-at"));
    if (!input) return tl::unexpected(input.error());
    entries.push_back({update.time, std::move(*input)});
  }
  return render::ValueSchedule(std::move(entries));
}

InputAssignment::Done InputAssignment::assign(const QString& assignment,
                                              runtime::CompositionRenderer& renderer) {
  const auto input = read(assignment, renderer, QStringLiteral("--set"));
  if (!input) return tl::unexpected(input.error());
  renderer.setValueForInputKey(input->value, input->key);
  return {};
}

}  // namespace cli
