#include "timeline/KeyFrameSelection.h"

#include <gtest/gtest.h>

namespace {

TEST(KeyFrameSelection, IgnoresWhatIsNoKeyFrame) {
  timeline::KeyFrameSelection::add({});
  EXPECT_FALSE(timeline::KeyFrameSelection::contains({}));
}

}  // namespace
