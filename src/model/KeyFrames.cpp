#include "model/KeyFrames.h"

#include <cmath>

namespace model {

int compareTimeInterval(double first, double second) {
  const double a = std::round(first * 100);
  const double b = std::round(second * 100);
  return a == b ? 0 : a < b ? -1 : 1;
}

AttributeValue KeyFrames::value(double timepoint) const {
  const auto found = m_values.find(roundedTimepoint(timepoint));
  return found == m_values.end() ? AttributeValue() : found->second;
}

bool KeyFrames::contains(double timepoint) const {
  return m_values.contains(roundedTimepoint(timepoint));
}

void KeyFrames::set(double timepoint, AttributeValue value) {
  const double time = roundedTimepoint(timepoint);
  if (std::isfinite(time)) m_values.insert_or_assign(time, std::move(value));
}

void KeyFrames::remove(double timepoint) {
  m_values.erase(roundedTimepoint(timepoint));
}

KeyFrames KeyFrames::moved(const QList<double>& times, double delta) const {
  KeyFrames result = *this;
  for (const double time : times) result.remove(time);
  for (const double time : times) result.set(time + delta, value(time));
  return result;
}

QList<double> KeyFrames::sortedKeyFrames() const {
  QList<double> times;
  for (const auto& [time, value] : m_values) times.append(time);
  return times;
}

double KeyFrames::previousTimePoint(double timepoint) const {
  auto after = m_values.lower_bound(roundedTimepoint(timepoint));
  if (after == m_values.begin()) return noTimepoint;
  return std::max(std::prev(after)->first, noTimepoint);
}

double KeyFrames::nextTimePoint(double timepoint) const {
  constexpr double never = 1e11;
  const auto after = m_values.upper_bound(roundedTimepoint(timepoint));
  return after == m_values.end() || after->first >= never ? noTimepoint : after->first;
}

std::optional<double> KeyFrames::timepointNear(double timepoint) const {
  for (const auto& [time, value] : m_values)
    if (compareTimeInterval(time, timepoint) == 0) return time;
  return {};
}

}  // namespace model
