#include "preview/FrameClock.h"

#include <algorithm>
#include <cmath>

namespace preview {

FrameClock::Clock::time_point FrameClock::dueTimeOf(qint64 frame) const {
  return m_start +
         std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(timeOf(frame)));
}

qint64 FrameClock::frameAt(Clock::time_point now) const {
  const std::chrono::duration<double> passed = now - m_start;
  // A frame whose due time was just waited for has begun.
  return static_cast<qint64>(std::floor(passed.count() * m_rate + 1e-6));
}

qint64 FrameClock::next(Clock::time_point now) {
  const qint64 following = m_frame + 1;
  const qint64 present = frameAt(now);
  m_dropped += std::max<qint64>(present - following, 0);
  m_frame = std::max(present, following);
  return m_frame;
}

void FrameClock::resume(Clock::time_point now) {
  m_frame = std::max(m_frame, frameAt(now) - 1);
}

}  // namespace preview
