#include "render/FrameRate.h"

#include <gtest/gtest.h>

namespace {

TEST(FrameRate, BroadcastRatesAreExactFractions) {
  EXPECT_EQ(render::FrameRate::fromText(QStringLiteral("29.97"))->numerator, 30000);
  EXPECT_EQ(render::FrameRate::fromText(QStringLiteral("29.97"))->denominator, 1001);
  EXPECT_EQ(render::FrameRate::fromText(QStringLiteral("60000/1001"))->denominator, 1001);
  EXPECT_DOUBLE_EQ(render::FrameRate::fromText(QStringLiteral("50"))->timeOf(90000 * 50), 90000.0);
  for (const char* wrong : {"", "0", "-25", "abc", "25/0", "1001", "1/x", "nan"})
    EXPECT_FALSE(render::FrameRate::fromText(QString::fromLatin1(wrong))) << wrong;
}

TEST(FrameRate, DurationsCountWholeFrames) {
  const render::FrameRate rate{25, 1};
  EXPECT_EQ(rate.framesIn(2.0), 50);
  EXPECT_EQ(rate.framesIn(0.1 + 0.2), 8);  // 7.5 frames need an eighth
  EXPECT_EQ(rate.framesIn(0.04 * 3), 3);   // not 4 for a rounding error
}

}  // namespace
