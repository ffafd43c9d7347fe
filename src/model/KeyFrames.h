#pragma once

#include <QList>
#include <map>
#include <optional>

#include "model/AttributeValue.h"

namespace model {

/// The timepoint (seconds) passed through single precision, as key frames are kept by it.
[[nodiscard]] inline double roundedTimepoint(double timepoint) {
  return static_cast<double>(static_cast<float>(timepoint));
}
/// Keeps the value of an attribute that is not animated, and says "no such time".
inline constexpr double noTimepoint = -1000000;

/// -1, 0 or 1; times that agree to the hundredth of a second (halves away from zero) are equal.
/// What is no number equals nothing.
[[nodiscard]] int compareTimeInterval(double first, double second);

/// The key-frame store of an attribute: values by timepoint in seconds (single precision). The
/// reserved timepoint holds the value of an attribute that is not animated.
class KeyFrames {
 public:
  /// Empty when there is no entry exactly at the (rounded) timepoint.
  [[nodiscard]] AttributeValue value(double timepoint) const;
  [[nodiscard]] bool contains(double timepoint) const;
  /// Nothing happens at a time that is not finite in single precision.
  void set(double timepoint, AttributeValue value);
  void remove(double timepoint);
  void clear() { m_values.clear(); }
  [[nodiscard]] bool isEmpty() const { return m_values.empty(); }

  /// With the entries at these times moved by the delta (seconds); what they land on is replaced.
  [[nodiscard]] KeyFrames moved(const QList<double>& times, double delta) const;

  /// All timepoints, ascending.
  [[nodiscard]] QList<double> sortedKeyFrames() const;
  /// The greatest timepoint before, the smallest after; noTimepoint when there is none.
  [[nodiscard]] double previousTimePoint(double timepoint) const;
  [[nodiscard]] double nextTimePoint(double timepoint) const;
  /// The first timepoint that equals this one to the hundredth of a second.
  [[nodiscard]] std::optional<double> timepointNear(double timepoint) const;

  friend bool operator==(const KeyFrames&, const KeyFrames&) = default;

 private:
  std::map<double, AttributeValue> m_values;
};

}  // namespace model
