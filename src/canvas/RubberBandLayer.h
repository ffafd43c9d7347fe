#pragma once

#include <QRectF>

class QPainter;

namespace canvas {

/// The dashed rectangle of a selection by dragging. In the view's logical pixels.
class RubberBandLayer {
 public:
  [[nodiscard]] const QRectF& currentRect() const { return m_currentRect; }
  void setCurrentRect(const QRectF& rect) { m_currentRect = rect; }
  /// Nothing while the rectangle is empty.
  void paint(QPainter& painter) const;

 private:
  QRectF m_currentRect;
};

}  // namespace canvas
