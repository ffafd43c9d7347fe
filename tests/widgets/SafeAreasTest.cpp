#include "widgets/SafeAreas.h"

#include <gtest/gtest.h>

namespace widgets {

TEST(SafeAreas, FramesLieOnPixelsCentresAtAnyDensity) {
  EXPECT_EQ(SafeAreas::niceDrawingRectFromRect({1.2, 2.8, 10, 10}, 1), QRectF(1.5, 2.5, 11, 11));
  EXPECT_EQ(SafeAreas::niceDrawingRectFromRect({1.2, 2.8, 10, 10}, 2),
            QRectF(1.25, 2.75, 10.5, 10.5));
  const SafeAreas areas({100, 200, 1000, 1000});
  EXPECT_NEAR(areas.outer().left(), 117.5, 1e-4);
  EXPECT_NEAR(areas.outer().height(), 965, 1e-4);
  EXPECT_NEAR(areas.inner().left(), 150, 1e-4);
  EXPECT_NEAR(areas.inner().top(), 225, 1e-4);
}

}  // namespace widgets
