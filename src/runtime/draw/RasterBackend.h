#pragma once

#include "runtime/draw/DrawBackend.h"

namespace runtime {

/// Draws on the CPU, mostly through the toolkit's raster painter. Needs no driver and no display,
/// and gives the same bytes on every machine. Any thread may draw, but only tasks of
/// QThreadPool::globalInstance() draw at full speed: elsewhere the toolkit cuts every fill into
/// jobs for that pool and waits for them (and samples turned images in shorter pieces, whose
/// rounding may differ in the last bit). See FrameDrawer.
class RasterBackend : public DrawBackend {
 public:
  void draw(const DrawList& list, QImage& target) override;
  /// Draws only the part of the picture within `area` (pixels, rows downwards): the same bytes
  /// there as if all were drawn. Areas that do not overlap may be drawn by several threads at once
  /// onto the same pixels, each through an image of its own around them.
  void drawArea(const DrawList& list, QImage& target, const QRect& area);
};

}  // namespace runtime
