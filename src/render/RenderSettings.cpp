#include "render/RenderSettings.h"

namespace render {

bool RenderSettings::isDrawable(const QSize& size) {
  constexpr int longestSide = 16384;
  constexpr qint64 mostPixels = qint64(longestSide) * longestSide / 2;
  return !size.isEmpty() && size.width() <= longestSide && size.height() <= longestSide &&
         qint64(size.width()) * size.height() <= mostPixels;
}

}  // namespace render
