#include "cli/InputSchedule.h"

#include "cli/InputAssignment.h"

namespace cli {

tl::expected<InputSchedule, LoadFailure> InputSchedule::read(
    const std::vector<RenderOptions::Update>& updates,
    const runtime::CompositionRenderer& renderer) {
  InputSchedule schedule;
  for (const RenderOptions::Update& update : updates) {
    auto input = InputAssignment::read(update.assignment, renderer, QStringLiteral("--set-at"));
    if (!input) return tl::unexpected(input.error());
    schedule.m_entries.push_back({update.time, std::move(*input)});
  }
  std::stable_sort(schedule.m_entries.begin(), schedule.m_entries.end(),
                   [](const Entry& a, const Entry& b) { return a.time < b.time; });
  return schedule;
}

bool InputSchedule::apply(double time, runtime::CompositionRenderer& renderer) {
  const size_t first = m_next;
  for (; !isDone() && m_entries[m_next].time <= time; ++m_next)
    renderer.setValueForInputKey(m_entries[m_next].input.value, m_entries[m_next].input.key);
  return m_next != first;
}

QStringList InputSchedule::unused() const {
  QStringList sentences;
  for (size_t i = m_next; i < m_entries.size(); ++i)
    sentences += QStringLiteral("'%1' was not set at %2 s: playing had ended")
                     .arg(m_entries[i].input.key)
                     .arg(m_entries[i].time);
  return sentences;
}

}  // namespace cli
