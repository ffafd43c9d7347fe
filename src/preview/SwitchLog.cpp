#include "preview/SwitchLog.h"

#include <algorithm>

namespace preview {

namespace {
/// An operator's evening; what is older has hardly a trace in the picture.
constexpr size_t mostEntries = 2000;
}  // namespace

void SwitchLog::add(double time, const playout::InputValue& input) {
  if (input.value.type() != runtime::PortType::Boolean) return;
  if (m_entries.size() == mostEntries)
    m_entries.erase(m_entries.begin(), m_entries.begin() + mostEntries / 2);
  m_entries.push_back({time, input});
}

bool SwitchLog::playAfter(const Host& host, double frameTime) const {
  double present = 0;
  auto entry = m_entries.begin();
  const auto setThoseOf = [&](double time) {
    for (; entry != m_entries.end() && entry->time <= time; ++entry) host.set(entry->input);
    present = std::max(present, time);
    return host.evaluate(present);
  };
  if (!setThoseOf(0)) return false;
  while (entry != m_entries.end()) {
    // Not a rounding error before the frame, in which a stop may have been reached; and never back,
    // which would begin the graphic anew.
    present = std::max(present, entry->time - frameTime * 0.999);
    if (!host.evaluate(present) || !setThoseOf(entry->time)) return false;
  }
  return true;
}

}  // namespace preview
