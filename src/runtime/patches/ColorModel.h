#pragma once

#include "foundation/Color.h"

namespace runtime::patches {

/// A colour by hue (0…1 for a full turn), saturation and luminosity (1 is white, ½ the pure hue).
struct HslColor {
  double hue = 0;
  double saturation = 0;
  double luminosity = 0;
  double alpha = 1;
};

/// Components outside 0…1 and NaN are clamped.
[[nodiscard]] foundation::Color colorFromHsl(const HslColor& hsl);
[[nodiscard]] HslColor hslFromColor(const foundation::Color& color);
/// Limits to 0…1; NaN becomes 0.
[[nodiscard]] double unit(double value);

}  // namespace runtime::patches
