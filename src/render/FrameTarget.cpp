#include "render/FrameTarget.h"

namespace render {

std::optional<runtime::movie::MovieFormat> FrameTarget::movie() const {
  const auto container = output.movie;
  if (!container) return {};
  return runtime::movie::MovieFormat{
      .container = *container,
      .codec = codec.value_or(runtime::movie::codecsOf(*container).first()),
      .size = size,
      .rateNumerator = rate.numerator,
      .rateDenominator = rate.denominator,
      .isInterlaced = isInterlaced};
}

}  // namespace render
