#include "canvas/PictureTarget.h"

#include <cmath>

#include "canvas/CanvasGeometry.h"

namespace canvas {

PictureTarget PictureTarget::of(const CanvasGeometry& geometry, const QRect& part,
                                double devicePixelRatio) {
  const auto device = [&](double length) {
    return static_cast<int>(std::lround(length * devicePixelRatio));
  };
  const QRectF frame = geometry.pictureFrame().translated(-part.topLeft());
  const QPoint corner(device(frame.left()), device(frame.top()));
  return {QSize(device(part.width()), device(part.height())),
          QRect(corner,
                QSize(device(frame.right()) - corner.x(), device(frame.bottom()) - corner.y()))};
}

}  // namespace canvas
