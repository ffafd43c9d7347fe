#include "runtime/patches/ColorModel.h"

#include <algorithm>
#include <cmath>

namespace runtime::patches {

using foundation::Color;

namespace {

/// One component of the hexagon of hues: `turn` is the hue shifted for that component.
double hexagon(double turn, double low, double high) {
  turn -= std::floor(turn);
  if (turn * 6 < 1) return low + (high - low) * turn * 6;
  if (turn * 2 < 1) return high;
  if (turn * 3 < 2) return low + (high - low) * (2.0 / 3 - turn) * 6;
  return low;
}

}  // namespace

double unit(double value) {
  return value > 0 ? std::min(value, 1.0) : 0;
}

Color colorFromHsl(const HslColor& hsl) {
  const double h = unit(hsl.hue);
  const double s = unit(hsl.saturation);
  const double l = unit(hsl.luminosity);
  const double high = l <= 0.5 ? l * (1 + s) : l + s - l * s;
  const double low = 2 * l - high;
  return {hexagon(h + 1.0 / 3, low, high), hexagon(h, low, high), hexagon(h - 1.0 / 3, low, high),
          unit(hsl.alpha)};
}

HslColor hslFromColor(const Color& color) {
  const double r = unit(color.red);
  const double g = unit(color.green);
  const double b = unit(color.blue);
  const double high = std::max({r, g, b});
  const double low = std::min({r, g, b});
  const double range = high - low;
  HslColor hsl{0, 0, (high + low) / 2, unit(color.alpha)};
  if (range <= 0) return hsl;
  hsl.saturation = range / (1 - std::abs(2 * hsl.luminosity - 1));
  if (high == r)
    hsl.hue = (g - b) / range / 6;
  else if (high == g)
    hsl.hue = ((b - r) / range + 2) / 6;
  else
    hsl.hue = ((r - g) / range + 4) / 6;
  hsl.hue -= std::floor(hsl.hue);
  return hsl;
}

}  // namespace runtime::patches
