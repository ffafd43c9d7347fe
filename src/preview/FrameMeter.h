#pragma once

#include <QtGlobal>
#include <array>
#include <chrono>

namespace preview {

/// Counts what became of frames, and measures the last of them.
class FrameMeter {
 public:
  struct Reading {
    qint64 made = 0;          ///< evaluated
    qint64 drawn = 0;         ///< of these, the ones that look different
    qint64 dropped = 0;       ///< not made, because it was too late for them
    qint64 unseen = 0;        ///< drawn, but replaced before anybody took them
    double milliseconds = 0;  ///< to make a frame, mean of the last second's
    double longest = 0;       ///< milliseconds, of the same frames
    double framesPerSecond = 0;
  };
  using Clock = std::chrono::steady_clock;

  void frameMade(Clock::time_point begin, Clock::time_point end, bool wasDrawn);
  void setDropped(qint64 dropped) { m_counts.dropped = m_droppedBefore + dropped; }
  /// Another run counts its drops from 0.
  void beginRun() { m_droppedBefore = m_counts.dropped; }
  void pictureUnseen() { ++m_counts.unseen; }
  [[nodiscard]] Reading reading(Clock::time_point now) const;

 private:
  struct Frame {
    Clock::time_point end = {};
    double milliseconds = 0;
  };
  static constexpr size_t mostFrames = 128;  // above a second of any format
  Reading m_counts;
  qint64 m_droppedBefore = 0;
  std::array<Frame, mostFrames> m_frames = {};
  size_t m_count = 0;
};

}  // namespace preview
