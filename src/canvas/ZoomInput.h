#pragma once

#include <QPointF>

class QGestureEvent;
class QNativeGestureEvent;
class QWheelEvent;

namespace canvas {

class CompositionView;

/// Zooms a view around the pointer: by the wheel in steps, by pinching to any factor.
class ZoomInput {
 public:
  explicit ZoomInput(CompositionView& view) : m_view(view) {}

  /// Positive steps zoom in; the point is one of the view.
  void step(int steps, const QPointF& viewPoint);
  void turnWheel(const QWheelEvent& event);
  void pinch(const QNativeGestureEvent& event);
  /// False when the event holds no pinch.
  bool pinch(QGestureEvent& event);

 private:
  void zoomTo(qint32 zoomMode, const QPointF& viewPoint);

  CompositionView& m_view;
  double m_wheelTurn = 0;  ///< what is left of the last whole step
};

}  // namespace canvas
