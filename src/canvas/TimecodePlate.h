#pragma once

#include <QRectF>
#include <QString>

#include "canvas/CanvasGeometry.h"

class QPainter;

namespace model {
class Composition;
}

namespace canvas {

/// The time code that stands on the canvas for a moment after the time changed; dark in every
/// theme.
class TimecodePlate {
 public:
  /// Of the composition's editor time, counted in its frames.
  [[nodiscard]] static QString textFor(const model::Composition& composition);
  /// In the view's logical pixels, below the upper edge of the picture and within the part of the
  /// view that is seen.
  [[nodiscard]] static QRectF place(const CanvasGeometry& geometry, const QRectF& seen,
                                    const QString& text);
  static void paint(QPainter& painter, const QRectF& place, const QString& text);
};

}  // namespace canvas
