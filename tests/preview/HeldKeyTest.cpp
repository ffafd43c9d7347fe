#include "preview/HeldKey.h"

#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

namespace preview {

namespace {

/// At a time in milliseconds, marked as a repetition or not.
struct SpaceEvent : QKeyEvent {
  SpaceEvent(Type type, quint64 time, bool isMarked)
      : QKeyEvent(type, Qt::Key_Space, {}, QStringLiteral(" "), isMarked) {
    setTimestamp(time);
  }
};

class HeldKeyTest : public testing::Test {
 protected:
  bool goesDown(quint64 time, bool isMarked = false) {
    return key.press(SpaceEvent(QEvent::KeyPress, time, isMarked));
  }
  void goUp(quint64 time, bool isMarked = false) {
    key.release(SpaceEvent(QEvent::KeyRelease, time, isMarked));
  }
  bool isUp() { return released.wait(500); }

  HeldKey key;
  QSignalSpy released{&key, &HeldKey::released};
};

TEST_F(HeldKeyTest, RepetitionsAreNoReleasesWhetherTheyAreMarkedOrNot) {
  EXPECT_TRUE(goesDown(1000));
  for (quint64 time = 1500; time < 1800; time += 30) {
    const bool isMarked = time % 4 == 0;
    goUp(time, isMarked);
    EXPECT_FALSE(goesDown(time, isMarked));
    QTest::qWait(30);
  }
  // A marked press may belong to a release that is not.
  goUp(1800);
  EXPECT_FALSE(goesDown(1800, true));
  QTest::qWait(60);
  EXPECT_EQ(released.count(), 0);
  goUp(1900);
  EXPECT_EQ(released.count(), 0);
  EXPECT_TRUE(isUp());
  QTest::qWait(60);
  EXPECT_EQ(released.count(), 1);
}

TEST_F(HeldKeyTest, QuickTapsCountEachEvenWhenTheProgramIsBusy) {
  EXPECT_TRUE(goesDown(1000));
  goUp(1040);
  // Read late: the release was not told yet, but the key was up for long enough.
  EXPECT_TRUE(goesDown(1080));
  EXPECT_EQ(released.count(), 1);
  goUp(1120);
  EXPECT_TRUE(isUp());
  EXPECT_TRUE(goesDown(1121));
  EXPECT_EQ(released.count(), 2);
}

TEST_F(HeldKeyTest, APressThatLayInTheQueueComesInTime) {
  EXPECT_TRUE(goesDown(1000));
  goUp(1500);
  QTimer::singleShot(0, &key, [this] {
    QTest::qSleep(60);
    QTimer::singleShot(0, &key, [this] { EXPECT_FALSE(goesDown(1500)); });
  });
  QTest::qWait(120);
  EXPECT_EQ(released.count(), 0);
}

TEST_F(HeldKeyTest, AKeyThatIsLetGoElsewhereIsUp) {
  EXPECT_TRUE(goesDown(1000));
  key.letGo();
  EXPECT_EQ(released.count(), 1);
  goUp(1100);
  QTest::qWait(60);
  EXPECT_EQ(released.count(), 1);
  EXPECT_TRUE(goesDown(1200));
  // No release was seen, and this is no repetition.
  EXPECT_TRUE(goesDown(1400));
  EXPECT_EQ(released.count(), 2);
}

}  // namespace

}  // namespace preview
