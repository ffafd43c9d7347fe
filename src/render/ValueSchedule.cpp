#include "render/ValueSchedule.h"

namespace render {

ValueSchedule::ValueSchedule(std::vector<Entry> entries) : m_entries(std::move(entries)) {
  std::stable_sort(m_entries.begin(), m_entries.end(),
                   [](const Entry& a, const Entry& b) { return a.time < b.time; });
}

bool ValueSchedule::apply(double time, runtime::CompositionRenderer& renderer) {
  const size_t first = m_next;
  for (; !isDone() && m_entries[m_next].time <= time; ++m_next)
    renderer.setValueForInputKey(m_entries[m_next].input.value, m_entries[m_next].input.key);
  return m_next != first;
}

QStringList ValueSchedule::unused() const {
  QStringList sentences;
  for (size_t i = m_next; i < m_entries.size(); ++i)
    sentences += QStringLiteral("'%1' was not set at %2 s: playing had ended")
                     .arg(m_entries[i].input.key)
                     .arg(m_entries[i].time);
  return sentences;
}

}  // namespace render
