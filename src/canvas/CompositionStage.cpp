#include "canvas/CompositionStage.h"

#include "canvas/TYZoomScrollView.h"
#include "widgets/TYTooltipWindow.h"

namespace canvas {

void CompositionView::Stage::showRubberBand(const QRectF& rect) {
  RubberBandLayer& layer = m_view.m_scene->rubberBandLayer();
  if (rect == layer.currentRect()) return;
  const QRectF touched = layer.currentRect() | rect;
  layer.setCurrentRect(rect);
  m_view.update(touched.toAlignedRect().adjusted(-2, -2, 2, 2));
}

void CompositionView::Stage::showNote(const QString& text, const QPointF& viewPoint) {
  widgets::TYTooltipWindow& plate = widgets::TYTooltipWindow::sharedWindow();
  if (text.isEmpty()) return plate.hideTooltip();
  constexpr int belowPointer = 8;
  plate.updateTipWithString(text,
                            m_view.mapToGlobal(viewPoint).toPoint() + QPoint(0, belowPointer));
  plate.showTooltip();
}

void CompositionView::Stage::showSnap(const Snap& snap) {
  Snap& shown = m_view.m_scene->transient().snap;
  if (snap.horizontal == shown.horizontal && snap.vertical == shown.vertical) return;
  shown = snap;
  m_view.update();
}

void CompositionView::Stage::autoscroll(const QPointF& viewPoint) {
  if (!m_view.m_scrollView) return;
  const QPoint point = viewPoint.toPoint();
  m_view.m_scrollView->ensureVisible(point.x(), point.y(), 0, 0);
}

void CompositionView::Stage::scrollBy(const QPointF& points) {
  if (m_view.m_scrollView) m_view.m_scrollView->scrollBy(points);
}

}  // namespace canvas
