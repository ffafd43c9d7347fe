#pragma once

#include <QImage>

#include "runtime/draw/DrawList.h"

namespace runtime {

/// Turns draw lists into pixels.
class DrawBackend {
 public:
  virtual ~DrawBackend() = default;
  /// Draws over what the target holds (premultiplied ARGB32). The destination is 2 units wide and
  /// 2 · height / width units high.
  virtual void draw(const DrawList& list, QImage& target) = 0;
};

}  // namespace runtime
