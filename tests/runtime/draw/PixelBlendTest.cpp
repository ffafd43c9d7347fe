#include "runtime/draw/PixelBlend.h"

#include <gtest/gtest.h>

namespace runtime {

namespace {

TEST(PixelBlend, TwoChannelsAtATimeGiveTheSameBytes) {
  for (int alpha = 0; alpha < 256; ++alpha) {
    for (int level = 0; level < 256; ++level) {
      // Each channel of its own, up to the highest that it can have.
      const QRgb source = qRgba(alpha, alpha / 2, level % (alpha + 1), alpha);
      const QRgb destination = qRgba(level, 255 - level, 255, level);
      ASSERT_EQ(blendedOver(destination, source), blended(destination, source, Blending::Over))
          << alpha << ' ' << level;
    }
  }
}

}  // namespace

}  // namespace runtime
