#include "runtime/draw/RasterBackend.h"

#include "runtime/draw/ListPainter.h"

namespace runtime {

void RasterBackend::draw(const DrawList& list, QImage& target) {
  drawArea(list, target, target.rect());
}

void RasterBackend::drawArea(const DrawList& list, QImage& target, const QRect& area) {
  Viewport viewport = Viewport::whole(target.size());
  viewport.clip &= area;
  if (viewport.clip.isEmpty()) return;
  if (target.format() != QImage::Format_ARGB32_Premultiplied)
    target.convertTo(QImage::Format_ARGB32_Premultiplied);
  ListPainter(PixelRows(target)).paint(list, viewport);
}

}  // namespace runtime
