#include "preview/FrameClock.h"

#include <gtest/gtest.h>

namespace preview {

namespace {

using Clock = FrameClock::Clock;
using std::chrono::milliseconds;

TEST(FrameClock, LateFramesAreDroppedNotQueued) {
  const Clock::time_point start;
  FrameClock clock(50, start);
  EXPECT_EQ(clock.next(start + milliseconds(20)), 1);
  EXPECT_EQ(clock.next(start + milliseconds(45)), 2);
  // Late by less than a frame: the frame is still shown.
  EXPECT_EQ(clock.next(start + milliseconds(79)), 3);
  EXPECT_EQ(clock.dropped(), 0);
  EXPECT_EQ(clock.next(start + milliseconds(1000)), 50);
  EXPECT_EQ(clock.dropped(), 46);
  // Caught up: no earlier frame comes after a later one.
  EXPECT_EQ(clock.next(start + milliseconds(1001)), 51);
  EXPECT_EQ(clock.dueTimeOf(51), start + milliseconds(1020));
}

TEST(FrameClock, NothingIsDroppedWhileNothingWasToBeMade) {
  const Clock::time_point start;
  FrameClock clock(25, start);
  clock.resume(start + milliseconds(60'010));
  EXPECT_EQ(clock.next(clock.dueTimeOf(clock.frame() + 1)), 1500);
  EXPECT_EQ(clock.dropped(), 0);
}

TEST(FrameClock, RatesThatAreNoWholeNumbersDoNotDrift) {
  const Clock::time_point start;
  FrameClock clock(60000 / 1001.0, start);
  for (qint64 frame = 1; frame < 200'000; ++frame)
    ASSERT_EQ(clock.next(clock.dueTimeOf(frame)), frame);
  EXPECT_EQ(clock.dropped(), 0);
}

}  // namespace

}  // namespace preview
