#include "preview/FrameMeter.h"

#include <algorithm>

namespace preview {

void FrameMeter::frameMade(Clock::time_point begin, Clock::time_point end, bool wasDrawn) {
  ++m_counts.made;
  if (wasDrawn) ++m_counts.drawn;
  m_frames[m_count++ % mostFrames] = {
      end, std::chrono::duration<double, std::milli>(end - begin).count()};
}

FrameMeter::Reading FrameMeter::reading(Clock::time_point now) const {
  Reading reading = m_counts;
  double sum = 0;
  int frames = 0;
  for (size_t i = 0; i < std::min(m_count, mostFrames); ++i) {
    const Frame& frame = m_frames[i];
    if (frame.end < now - std::chrono::seconds(1)) continue;
    ++frames;
    sum += frame.milliseconds;
    reading.longest = std::max(reading.longest, frame.milliseconds);
  }
  reading.framesPerSecond = frames;
  if (frames > 0) reading.milliseconds = sum / frames;
  return reading;
}

}  // namespace preview
