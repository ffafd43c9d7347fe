#pragma once

#include <QRectF>

class QPainter;

namespace canvas {

/// What stands on the canvas of a graphic without components: how to begin.
class EmptyHint {
 public:
  /// In the middle of the area; nothing where there is no room.
  static void paint(QPainter& painter, const QRectF& area);
};

}  // namespace canvas
