#include "runtime/image/Combining.h"
#include "runtime/image/ImageFilter.h"

namespace runtime::image {

namespace {

/// A filter of a source S and a background B; missing ones are transparent.
template <Coverage coverage, Pixel (*f)(Pixel, Pixel)>
Image composite(const FilterArguments& a) {
  return combined(a.image(0), a.image(1), coverage, f);
}

Pixel over(Pixel s, Pixel b) {
  return s + b * (1 - s.a);
}
Pixel inside(Pixel s, Pixel b) {
  return s * b.a;
}
Pixel outside(Pixel s, Pixel b) {
  return s * (1 - b.a);
}
Pixel atop(Pixel s, Pixel b) {
  return s * b.a + b * (1 - s.a);
}
Pixel sum(Pixel s, Pixel b) {
  return (s + b).clamped();
}
Pixel product(Pixel s, Pixel b) {
  return s * b;
}
Pixel highest(Pixel s, Pixel b) {
  return {std::max(s.r, b.r), std::max(s.g, b.g), std::max(s.b, b.b), std::max(s.a, b.a)};
}
Pixel lowest(Pixel s, Pixel b) {
  return {std::min(s.r, b.r), std::min(s.g, b.g), std::min(s.b, b.b), std::min(s.a, b.a)};
}

Image blendWithMask(const FilterArguments& a) {
  const Image& image = a.image(0);
  const Image& background = a.image(1);
  const Image& mask = a.image(2);
  if (mask.isNull()) return background;
  const Image shown = combined(image, mask, Coverage::Intersection,
                               [](Pixel s, Pixel m) { return s * m.luminance(); });
  if (background.isNull()) return shown;
  const Image rest = combined(background, mask, Coverage::First,
                              [](Pixel b, Pixel m) { return b * (1 - m.luminance()); });
  if (shown.isNull()) return rest;
  return combined(shown, rest, Coverage::Union, sum);
}

}  // namespace

ImageFilters compositingFilters() {
  using namespace inputs;
  using C = Coverage;
  const std::vector<FilterInput> both = {image(), image("inputBackgroundImage")};
  return {
      {"CISourceOverCompositing", both, composite<C::Union, over>},
      {"CISourceInCompositing", both, composite<C::Intersection, inside>},
      {"CISourceOutCompositing", both, composite<C::First, outside>},
      {"CISourceAtopCompositing", both, composite<C::Second, atop>},
      {"CIAdditionCompositing", both, composite<C::Union, sum>},
      {"CIMultiplyCompositing", both, composite<C::Intersection, product>},
      {"CIMaximumCompositing", both, composite<C::Union, highest>},
      {"CIMinimumCompositing", both, composite<C::Intersection, lowest>},
      {"CIBlendWithMask",
       {image(), image("inputBackgroundImage"), image("inputMaskImage")},
       blendWithMask},
  };
}

}  // namespace runtime::image
