#pragma once

#include <QtGlobal>
#include <chrono>

namespace preview {

/// When frames of a rate are due, on a clock that only goes forward. Frames are counted from the
/// start, so that nothing drifts, and what is late by a whole frame is left out instead of piling
/// up.
class FrameClock {
 public:
  using Clock = std::chrono::steady_clock;
  FrameClock(double framesPerSecond, Clock::time_point start)
      : m_rate(framesPerSecond), m_start(start) {}

  /// Seconds from the first frame on.
  [[nodiscard]] double timeOf(qint64 frame) const { return static_cast<double>(frame) / m_rate; }
  [[nodiscard]] Clock::time_point dueTimeOf(qint64 frame) const;
  /// The last frame that next() returned; 0 before.
  [[nodiscard]] qint64 frame() const { return m_frame; }
  /// The frame to make next. Those that are over by then are dropped.
  qint64 next(Clock::time_point now);
  /// Nothing was to be made until now: goes on with the present frame, none is dropped.
  void resume(Clock::time_point now);
  [[nodiscard]] qint64 dropped() const { return m_dropped; }

 private:
  [[nodiscard]] qint64 frameAt(Clock::time_point now) const;

  double m_rate;
  Clock::time_point m_start;
  qint64 m_frame = 0;
  qint64 m_dropped = 0;
};

}  // namespace preview
