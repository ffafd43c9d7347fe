#include "widgets/ZoomSteps.h"

#include <gtest/gtest.h>

namespace widgets {

TEST(ZoomSteps, StepsLieOnBothSidesOfAnyFactor) {
  EXPECT_EQ(ZoomSteps::above(0.55), 75);
  EXPECT_EQ(ZoomSteps::below(0.55), 50);
  EXPECT_EQ(ZoomSteps::above(1.0), 150);
  EXPECT_EQ(ZoomSteps::below(1.0), 75);
  EXPECT_EQ(ZoomSteps::above(9), 800);
  EXPECT_EQ(ZoomSteps::below(0.01), 10);
  EXPECT_EQ(ZoomSteps::nearest(0.553), 55);
  EXPECT_EQ(ZoomSteps::nearest(100), 800);
}

}  // namespace widgets
