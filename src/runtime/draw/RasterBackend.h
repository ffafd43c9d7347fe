#pragma once

#include "runtime/draw/DrawBackend.h"

namespace runtime {

/// Draws on the CPU through the toolkit's raster painter. Needs no driver and no display, and gives
/// the same bytes on every machine.
class RasterBackend : public DrawBackend {
 public:
  void draw(const DrawList& list, QImage& target) override;
};

/// An image that is a drawn list: the result of a render-in-image patch. Pixels are drawn when
/// first asked for.
class DrawnImage : public ImageSource {
 public:
  /// Drawn over `before` where given, else over transparent black.
  DrawnImage(DrawList list, const QSize& size, QImage before = {});
  [[nodiscard]] QRect extent() const override { return {QPoint(), m_size}; }
  [[nodiscard]] QImage pixels(const QRect& area) const override;
  [[nodiscard]] const DrawList& list() const { return m_list; }

 private:
  DrawList m_list;
  QSize m_size;
  QImage m_before;
};

}  // namespace runtime
