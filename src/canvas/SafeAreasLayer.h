#pragma once

#include <QColor>
#include <QRectF>

#include "canvas/CanvasGeometry.h"

class QPainter;

namespace model {
class Composition;
}

namespace canvas {

/// Safe-area frames and guides, in lines of one device pixel.
class SafeAreasLayer {
 public:
  explicit SafeAreasLayer(const model::Composition& composition) : m_composition(composition) {}

  /// Expanded to whole device pixels, then moved by half of one, so that lines along it fall on
  /// pixels' centres. Logical pixels at so many device pixels each.
  [[nodiscard]] static QRectF niceDrawingRectFromRect(const QRectF& rect, double devicePixelRatio);
  /// In the view's logical pixels: 96.5 % of the picture; 90 % of its width by 95 % of its height.
  [[nodiscard]] static QRectF outerArea(const CanvasGeometry& geometry);
  [[nodiscard]] static QRectF innerArea(const CanvasGeometry& geometry);

  void paint(QPainter& painter, const CanvasGeometry& geometry) const;

 private:
  static void strokeArea(QPainter& painter, const QRectF& area, const QColor& color);

  const model::Composition& m_composition;
};

}  // namespace canvas
