#pragma once

#include <vector>

namespace runtime::patches {

/// Turns a time that runs on into one that halts at stop frames until a trigger comes.
///
/// - The output starts at 0 and runs with the input; time spent waiting does not count.
/// - On reaching a stop it stands exactly at the stop's time, however far the input has stepped.
/// - The trigger counts only when it rises while the clock is already waiting: a rise before, or in
///   the very step that reaches the stop, is lost, and one that is held releases one stop only.
/// - Stops that are equal to the hundredth of a second are one; those before 0 or at or after the
///   end never hold.
/// - At the end the output stays there and the clock is no longer active.
/// - An input that steps back starts everything anew.
class StopframeClock {
 public:
  struct Reading {
    double time = 0;  ///< seconds
    bool isWaiting = false;
    bool isActive = true;
    friend bool operator==(const Reading&, const Reading&) = default;
  };

  /// Stops in seconds, in any order; the duration in seconds, nothing below 0.
  StopframeClock(std::vector<double> stops, double duration);

  /// Moves on to the input time (seconds; an input that is not finite leaves the time alone).
  Reading advance(double input, bool trigger);
  /// Waits or has ended: only a rising trigger, or a time that steps back, moves it.
  [[nodiscard]] bool standsStill() const { return m_waiting || m_hasEnded; }
  /// The stops that can hold, ascending.
  [[nodiscard]] const std::vector<double>& stops() const { return m_stops; }

 private:
  void restart();
  [[nodiscard]] Reading moved(bool released);

  std::vector<double> m_stops;
  double m_duration;
  double m_input = 0;
  double m_delay = 0;  ///< input time spent waiting
  size_t m_next = 0;   ///< the stop ahead
  bool m_trigger = false;
  bool m_waiting = false;
  bool m_hasEnded = false;
};

}  // namespace runtime::patches
