#pragma once

#include "runtime/Image.h"

namespace runtime::image {

/// Gaussian blur with the standard deviation in pixels; transparent black lies around the image,
/// whose extent grows by three deviations (at most 1,500 pixels).
[[nodiscard]] Image gaussianBlurred(const Image& image, double sigma);
/// Mean over the square of 2·radius + 1 pixels.
[[nodiscard]] Image boxBlurred(const Image& image, int radius);

}  // namespace runtime::image
