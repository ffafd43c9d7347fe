#include "timeline/TYTimelineScrollView.h"

#include <QScrollBar>
#include <QWheelEvent>

#include "timeline/TYTimelineRulerView.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TYTimelneClipView.h"

namespace timeline {

namespace {

constexpr int thickness = static_cast<int>(TYTimelineGeometry::rulerThickness);
/// What has room but for this is not worth a scroll bar.
constexpr double rounding = 1e-3;
constexpr int rowHeight = static_cast<int>(TimelineMeasures::componentHeight);

}  // namespace

TYTimelineScrollView::TYTimelineScrollView(TYTimelineView& view)
    : QAbstractScrollArea(&view),
      m_view(view),
      m_clipView(new TYTimelneClipView(view)),
      m_horizontal(new TYTimelineRulerView(view, Qt::Horizontal, this)),
      m_vertical(new TYTimelineRulerView(view, Qt::Vertical, this)) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setViewport(m_clipView);
  m_clipView->setFocusPolicy(Qt::NoFocus);
  horizontalScrollBar()->setSingleStep(rowHeight);
  verticalScrollBar()->setSingleStep(rowHeight);
}

void TYTimelineScrollView::setComponentsWidth(int width) {
  if (width == m_componentsWidth) return;
  m_componentsWidth = width;
  setViewportMargins(width, thickness, 0, 0);
  placeRulers();
}

void TYTimelineScrollView::setDocumentSize(const QSizeF& size) {
  m_documentSize = size;
  updateRanges();
}

void TYTimelineScrollView::updateRanges() {
  const QSize seen = viewport()->size();
  horizontalScrollBar()->setPageStep(seen.width());
  verticalScrollBar()->setPageStep(seen.height());
  horizontalScrollBar()->setRange(
      0, std::max(0, qCeil(m_documentSize.width() - rounding) - seen.width()));
  verticalScrollBar()->setRange(0, std::max(0, qCeil(m_documentSize.height()) - seen.height()));
}

QPoint TYTimelineScrollView::visibleOrigin() const {
  return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void TYTimelineScrollView::scrollTo(const QPointF& origin) {
  horizontalScrollBar()->setValue(qRound(origin.x()));
  verticalScrollBar()->setValue(qRound(origin.y()));
}

void TYTimelineScrollView::placeRulers() {
  const QRect rows = viewport()->geometry();
  m_horizontal->setGeometry(0, 0, rows.right() + 1, thickness);
  m_vertical->setGeometry(0, rows.top(), m_componentsWidth, rows.height());
}

void TYTimelineScrollView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  placeRulers();
  updateRanges();
  m_view.visibleSizeChanged();
}

void TYTimelineScrollView::scrollContentsBy(int, int) {
  m_view.scrolled();
}

bool TYTimelineScrollView::viewportEvent(QEvent* event) {
  // The clip view paints and takes the mouse itself.
  const bool isOurs = event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest ||
                      event->type() == QEvent::LayoutDirectionChange;
  return isOurs && QAbstractScrollArea::viewportEvent(event);
}

void TYTimelineScrollView::turnWheel(QWheelEvent& event) {
  if (!event.modifiers().testFlag(Qt::ShiftModifier)) return wheelEvent(&event);
  const bool isFine = !event.pixelDelta().isNull();
  const QPoint turn = isFine ? event.pixelDelta() : event.angleDelta() * 3 * rowHeight / 120;
  m_view.scrollBy(-QPointF(turn.x() + turn.y(), 0));
  event.accept();
}

}  // namespace timeline
