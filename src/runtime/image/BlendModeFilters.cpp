#include "runtime/image/Combining.h"
#include "runtime/image/ImageFilter.h"

namespace runtime::image {

namespace {

using Blend = float (*)(float b, float s);
using ColorBlend = Pixel (*)(Pixel b, Pixel s);

/// Where both images are, the blended colour; elsewhere the one that is there.
Pixel blended(Pixel s, Pixel b, Pixel both) {
  const Pixel p = s * (1 - b.a) + b * (1 - s.a) + both * (s.a * b.a);
  return {p.r, p.g, p.b, s.a + b.a - s.a * b.a};
}

/// f on each straight component of background and source.
template <Blend f>
Image separable(const FilterArguments& a) {
  return combined(a.image(0), a.image(1), Coverage::Union, [](Pixel s, Pixel b) {
    const Pixel cs = s.straight();
    const Pixel cb = b.straight();
    return blended(s, b, {f(cb.r, cs.r), f(cb.g, cs.g), f(cb.b, cs.b), 1});
  });
}

template <ColorBlend f>
Image nonSeparable(const FilterArguments& a) {
  return combined(a.image(0), a.image(1), Coverage::Union,
                  [](Pixel s, Pixel b) { return blended(s, b, f(b.straight(), s.straight())); });
}

float multiply(float b, float s) {
  return b * s;
}
float screen(float b, float s) {
  return b + s - b * s;
}
float hardLight(float b, float s) {
  return s <= 0.5F ? multiply(b, 2 * s) : screen(b, 2 * s - 1);
}
float overlay(float b, float s) {
  return hardLight(s, b);
}
float darken(float b, float s) {
  return std::min(b, s);
}
float lighten(float b, float s) {
  return std::max(b, s);
}
float colorDodge(float b, float s) {
  if (b <= 0) return 0;
  return s >= 1 ? 1 : std::min(1.0F, b / (1 - s));
}
float colorBurn(float b, float s) {
  if (b >= 1) return 1;
  return s <= 0 ? 0 : 1 - std::min(1.0F, (1 - b) / s);
}
float softLight(float b, float s) {
  if (s <= 0.5F) return b - (1 - 2 * s) * b * (1 - b);
  const float d = b <= 0.25F ? ((16 * b - 12) * b + 4) * b : std::sqrt(b);
  return b + (2 * s - 1) * (d - b);
}
float difference(float b, float s) {
  return std::abs(b - s);
}
float exclusion(float b, float s) {
  return b + s - 2 * b * s;
}
float subtract(float b, float s) {
  return std::max(b - s, 0.0F);
}

float luma(Pixel c) {
  return 0.3F * c.r + 0.59F * c.g + 0.11F * c.b;
}

/// The colour with another luma, pulled towards grey where it would leave 0…1.
Pixel withLuma(Pixel c, float l) {
  const float d = l - luma(c);
  c = {c.r + d, c.g + d, c.b + d, 1};
  const float low = std::min({c.r, c.g, c.b});
  const float high = std::max({c.r, c.g, c.b});
  const Pixel grey{l, l, l, 1};
  if (low < 0) c = grey + (c - grey) * (l / (l - low));
  if (high > 1) c = grey + (c - grey) * ((1 - l) / (high - l));
  return c;
}

float saturation(Pixel c) {
  return std::max({c.r, c.g, c.b}) - std::min({c.r, c.g, c.b});
}

Pixel withSaturation(Pixel c, float s) {
  const float low = std::min({c.r, c.g, c.b});
  const float range = saturation(c);
  if (range <= 0) return {0, 0, 0, 1};
  const float k = s / range;
  return {(c.r - low) * k, (c.g - low) * k, (c.b - low) * k, 1};
}

Pixel hueOf(Pixel b, Pixel s) {
  return withLuma(withSaturation(s, saturation(b)), luma(b));
}
Pixel saturationOf(Pixel b, Pixel s) {
  return withLuma(withSaturation(b, saturation(s)), luma(b));
}
Pixel colorOf(Pixel b, Pixel s) {
  return withLuma(s, luma(b));
}
Pixel luminosityOf(Pixel b, Pixel s) {
  return withLuma(b, luma(s));
}

}  // namespace

ImageFilters blendModeFilters() {
  using namespace inputs;
  const std::vector<FilterInput> both = {image(), image("inputBackgroundImage")};
  return {
      {"CIMultiplyBlendMode", both, separable<multiply>},
      {"CIScreenBlendMode", both, separable<screen>},
      {"CIOverlayBlendMode", both, separable<overlay>},
      {"CIDarkenBlendMode", both, separable<darken>},
      {"CILightenBlendMode", both, separable<lighten>},
      {"CIColorDodgeBlendMode", both, separable<colorDodge>},
      {"CIColorBurnBlendMode", both, separable<colorBurn>},
      {"CISoftLightBlendMode", both, separable<softLight>},
      {"CIHardLightBlendMode", both, separable<hardLight>},
      {"CIDifferenceBlendMode", both, separable<difference>},
      {"CIExclusionBlendMode", both, separable<exclusion>},
      {"CISubtractBlendMode", both, separable<subtract>},
      {"CIHueBlendMode", both, nonSeparable<hueOf>},
      {"CISaturationBlendMode", both, nonSeparable<saturationOf>},
      {"CIColorBlendMode", both, nonSeparable<colorOf>},
      {"CILuminosityBlendMode", both, nonSeparable<luminosityOf>},
  };
}

}  // namespace runtime::image
