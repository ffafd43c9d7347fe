#pragma once

#include <QRect>
#include <optional>
#include <vector>

#include "runtime/image/PixelReader.h"
#include "runtime/image/kernel/KernelVector.h"

namespace runtime::image::kernel {

struct SamplerState {
  QRect extent;
  bool isNearest = false;
  std::optional<PixelReader> reader;
};

/// What built-in functions can see.
struct Surroundings {
  float x = 0;
  float y = 0;
  std::vector<SamplerState> samplers;  // by parameter
};

/// Unused ones are 0.
using Arguments = std::array<Vector, 4>;

/// Calls the built-in function of the index that builtinIndex() gave.
[[nodiscard]] Vector callBuiltin(int index, const Arguments& arguments, const Surroundings& around);

}  // namespace runtime::image::kernel
