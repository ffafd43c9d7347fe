#pragma once

#include "canvas/CanvasStage.h"
#include "canvas/CompositionView.h"

namespace canvas {

/// The view as its gestures see it.
class CompositionView::Stage : public CanvasStage {
 public:
  explicit Stage(CompositionView& view) : m_view(view) {}

  [[nodiscard]] model::Composition& composition() override { return *m_view.m_composition; }
  void showCursor(Qt::CursorShape shape) override { m_view.setCursor(shape); }
  void showRubberBand(const QRectF& rect) override;
  void showNote(const QString& text, const QPointF& viewPoint) override;
  void showSnap(const Snap& snap) override;
  [[nodiscard]] QRectF pictureRect(const QRectF& viewRect) const override {
    return m_view.m_geometry.pictureRect(viewRect);
  }
  void autoscroll(const QPointF& viewPoint) override;
  void scrollBy(const QPointF& points) override;

 private:
  CompositionView& m_view;
};

}  // namespace canvas
