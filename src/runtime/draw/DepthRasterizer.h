#pragma once

#include <variant>
#include <vector>

#include "runtime/draw/Gradient.h"
#include "runtime/draw/SampleBuffer.h"

namespace runtime {

/// Draws a list with a depth buffer: for meshes, lit surfaces and things that pass through one
/// another. Depth is clear at the start.
class DepthRasterizer {
 public:
  DepthRasterizer(const DrawList& list, const Viewport& viewport);
  void paint(const PixelRows& target) const;

 private:
  struct Clear {
    QRgb color = 0;
    bool clearsColor = true;
    bool clearsDepth = true;
  };
  struct Fill {
    GradientRamp ramp;
    Blending blending;
    bool clearsDepth;
  };
  using Step = std::variant<Clear, Fill, Surface>;

  void perform(const Clear& clear, SampleBuffer& buffer) const;
  void perform(const Fill& fill, SampleBuffer& buffer) const;
  void perform(const Surface& surface, SampleBuffer& buffer) const;

  Viewport m_viewport;
  QRect m_touched;
  std::vector<Step> m_steps;
};

}  // namespace runtime
