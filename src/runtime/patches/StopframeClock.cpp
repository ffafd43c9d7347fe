#include "runtime/patches/StopframeClock.h"

#include <algorithm>
#include <cmath>

namespace runtime::patches {

namespace {
double hundredth(double seconds) {
  return std::round(seconds * 100);
}
}  // namespace

StopframeClock::StopframeClock(std::vector<double> stops, double duration)
    : m_stops(std::move(stops)), m_duration(duration > 0 ? duration : 0) {
  std::erase_if(m_stops, [this](double stop) { return !(stop >= 0 && stop < m_duration); });
  std::sort(m_stops.begin(), m_stops.end());
  const auto same = [](double a, double b) { return hundredth(a) == hundredth(b); };
  m_stops.erase(std::unique(m_stops.begin(), m_stops.end(), same), m_stops.end());
}

void StopframeClock::restart() {
  m_delay = 0;
  m_next = 0;
  m_waiting = false;
  m_hasEnded = false;
}

StopframeClock::Reading StopframeClock::advance(double input, bool trigger) {
  if (!std::isfinite(input)) input = m_input;
  if (input < m_input) restart();
  m_input = input;
  const bool rises = trigger && !m_trigger;
  m_trigger = trigger;
  const bool released = rises && m_waiting;
  return moved(released);
}

StopframeClock::Reading StopframeClock::moved(bool released) {
  if (m_waiting) {
    m_delay = m_input - m_stops[m_next];
    if (!released) return {m_stops[m_next], true, true};
    m_waiting = false;
    ++m_next;
  }
  const double time = m_input - m_delay;
  if (m_next < m_stops.size() && time >= m_stops[m_next]) {
    m_waiting = true;
    return {m_stops[m_next], true, true};
  }
  m_hasEnded = time >= m_duration;
  if (m_hasEnded) return {m_duration, false, false};
  return {std::max(time, 0.0), false, true};
}

}  // namespace runtime::patches
