#include "foundation/Timecode.h"

#include <gtest/gtest.h>

namespace foundation {

namespace {

const TimecodeRate pal = TimecodeRate::whole(25);
const TimecodeRate ntsc = TimecodeRate::slowed(30);

std::string text(const char* typed, const TimecodeRate& rate = pal, double present = 0) {
  const auto read = Timecode::fromString(QString::fromUtf8(typed), rate, present);
  return (read ? read->toString() : read.error().message).toStdString();
}

}  // namespace

TEST(Timecode, EveryFrameOfADayComesBackThroughItsText) {
  for (const TimecodeRate& rate :
       {TimecodeRate::slowed(24), TimecodeRate::whole(24), pal, ntsc, TimecodeRate::whole(30),
        TimecodeRate::whole(50), TimecodeRate::slowed(60), TimecodeRate::whole(60)}) {
    const auto day = static_cast<qint64>(24 * 3600 * rate.framesPerSecond());
    QString before;
    for (qint64 frame = 0; frame <= day; ++frame) {
      const Timecode code(frame, rate);
      const QString written = code.toString();
      ASSERT_LT(before, written) << "numbers ascend";
      ASSERT_EQ(Timecode::fromSeconds(code.seconds(), rate).frames(), frame);
      // Reading is slow beside the rest; every number of a second comes along all the same.
      if (frame % 41 == 0) {
        const auto read = Timecode::fromString(written, rate);
        ASSERT_TRUE(read) << written.toStdString();
        ASSERT_EQ(read->frames(), frame) << written.toStdString();
      }
      before = written;
    }
  }
}

TEST(Timecode, DroppedNumbersKeepUpWithTheClock) {
  EXPECT_EQ(Timecode(1799, ntsc).toString(), QStringLiteral("00:00:59;29"));
  EXPECT_EQ(Timecode(1800, ntsc).toString(), QStringLiteral("00:01:00;02"));
  EXPECT_EQ(Timecode(17982, ntsc).toString(), QStringLiteral("00:10:00;00"));
  EXPECT_EQ(Timecode::fromSeconds(3600, ntsc).toString(), QStringLiteral("01:00:00;00"));
  EXPECT_EQ(Timecode::fromSeconds(3600, TimecodeRate::slowed(60)).toString(),
            QStringLiteral("01:00:00;00"));
  EXPECT_EQ(Timecode::fromSeconds(3600, TimecodeRate::slowed(24)).toString(),
            QStringLiteral("00:59:56:10"));
  EXPECT_EQ(text("1:00;02", ntsc), "00:01:00;02");
  EXPECT_EQ(text("1:00;01", ntsc), "This time code leaves out the first 2 frames of the minute.");
}

TEST(Timecode, ReadsWhatPeopleType) {
  EXPECT_EQ(text("1:12"), "00:00:01:12");
  EXPECT_EQ(text("112"), "00:00:01:12");
  EXPECT_EQ(text("10000000"), "10:00:00:00");
  EXPECT_EQ(text(" 1.02.03.04 "), "01:02:03:04");
  EXPECT_EQ(text(":12"), "00:00:00:12");
  EXPECT_EQ(text("2s"), "00:00:02:00");
  EXPECT_EQ(text("1,5 s"), "00:00:01:13");
  EXPECT_EQ(text("1m 30s 12f"), "00:01:30:12");
  EXPECT_EQ(text("500MS"), "00:00:00:13");
  EXPECT_EQ(text("+10", pal, 2), "00:00:02:10");
  EXPECT_EQ(text("-1:00", pal, 2), "00:00:01:00");
  EXPECT_EQ(text("\u22123s", pal, 2), "-00:00:01:00");
}

TEST(Timecode, SaysWhatIsWrong) {
  EXPECT_EQ(text("1:25"), "A second has 25 frames, 0 to 24.");
  EXPECT_EQ(text("1:75:00"), "A minute has 60 seconds, 0 to 59.");
  EXPECT_EQ(text("soon"), "\"soon\" is no time; write for instance 1:12, 2s or 500ms.");
  EXPECT_EQ(text("2s later"), "\"2s later\" is no time; write for instance 1:12, 2s or 500ms.");
  EXPECT_EQ(text("1:2:3:4:5"), "A time has hours, minutes, seconds and frames.");
  EXPECT_EQ(text("99999999999999999999"), "A time has hours, minutes, seconds and frames.");
  EXPECT_EQ(text("9999999h"), "The time is too long.");
  EXPECT_EQ(text("+"), "Write a time, for instance 1:12, +10 or 2s.");
  EXPECT_EQ(text(""), "Write a time, for instance 1:12, +10 or 2s.");
}

}  // namespace foundation
