#include "runtime/image/Combining.h"

namespace runtime::image {

Image covering(const Image& first, const Image& second, Coverage coverage,
               const ComputedImage::Render& render) {
  const std::vector<Image> inputs{first, second};
  const auto infinite = [&] { return ComputedImage::infinite(inputs, render); };
  switch (coverage) {
    case Coverage::First:
      return ComputedImage::like(first, inputs, render);
    case Coverage::Second:
      return ComputedImage::like(second, inputs, render);
    case Coverage::Union:
      if (first.isInfinite() || second.isInfinite()) return infinite();
      return ComputedImage::finite(first.extent() | second.extent(), inputs, render);
    case Coverage::Intersection:
      if (first.isNull() || second.isNull()) return {};
      if (first.isInfinite()) return ComputedImage::like(second, inputs, render);
      if (second.isInfinite()) return ComputedImage::like(first, inputs, render);
      return ComputedImage::finite(first.extent() & second.extent(), inputs, render);
  }
  return {};
}

}  // namespace runtime::image
