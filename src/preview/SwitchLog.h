#pragma once

#include <functional>
#include <vector>

#include "playout/InputValues.h"

namespace preview {

/// When switches of a graphic were set since it began, the trigger above all: what another program
/// has to be told to stand where this one stands. Of other inputs the last value is enough.
class SwitchLog {
 public:
  void clear() { m_entries.clear(); }
  /// Times (seconds) in ascending order. What is no switch is left out.
  void add(double time, const playout::InputValue& input);

  struct Host {
    std::function<void(const playout::InputValue&)> set;
    /// False ends the playing.
    std::function<bool(double time)> evaluate;
  };
  /// Sets the switches at their times. The beginning is evaluated, as is each time and the frame
  /// before it, so that a graphic stands where it stood when the switch changed. False when it was
  /// ended.
  [[nodiscard]] bool playAfter(const Host& host, double frameTime) const;

 private:
  struct Entry {
    double time;
    playout::InputValue input;
  };
  std::vector<Entry> m_entries;
};

}  // namespace preview
