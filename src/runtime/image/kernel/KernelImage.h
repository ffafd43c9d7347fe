#pragma once

#include <array>

#include "runtime/Image.h"
#include "runtime/image/kernel/KernelProgram.h"

namespace runtime::image::kernel {

/// The value of one parameter: an image for samplers, else numbers (colours premultiplied).
struct Argument {
  Image image;
  bool clampsToEdge = false;  ///< a sampler's edge pixels go on; else transparent lies around it
  bool isNearest = false;     ///< a sampler does not interpolate
  std::array<float, 4> numbers = {};
};

/// The image that the program's kernel computes from its arguments, one for each parameter. It
/// covers what its images cover together, and everything when it has none. No image when it has
/// samplers and all are empty. A pixel whose computation takes too many steps stays transparent.
[[nodiscard]] Image kernelImage(std::shared_ptr<const Program> program,
                                std::vector<Argument> arguments);

}  // namespace runtime::image::kernel
