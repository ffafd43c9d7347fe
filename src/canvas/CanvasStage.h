#pragma once

#include <QPointF>
#include <QRectF>
#include <Qt>

#include "canvas/Snapping.h"

namespace model {
class Composition;
}

namespace canvas {

/// What a gesture may ask of the view that it happens in.
class CanvasStage {
 public:
  virtual ~CanvasStage() = default;
  CanvasStage() = default;
  CanvasStage(const CanvasStage&) = delete;
  CanvasStage& operator=(const CanvasStage&) = delete;

  [[nodiscard]] virtual model::Composition& composition() = 0;
  /// Until the gesture ends.
  virtual void showCursor(Qt::CursorShape shape) = 0;
  /// In the view's logical pixels; empty: none.
  virtual void showRubberBand(const QRectF& rect) = 0;
  /// A plate at the point of the view; an empty text takes it away.
  virtual void showNote(const QString& text, const QPointF& viewPoint) = 0;
  /// Marks the guides that a drag lies on.
  virtual void showSnap(const Snap& snap) = 0;
  [[nodiscard]] virtual QRectF pictureRect(const QRectF& viewRect) const = 0;
  /// Scrolls so far that the point of the view is seen.
  virtual void autoscroll(const QPointF& viewPoint) = 0;
  virtual void scrollBy(const QPointF& points) = 0;
};

}  // namespace canvas
