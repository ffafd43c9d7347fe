#include "timeline/TYTimelineRulerView.h"

#include <QPaintEvent>
#include <QPainter>

#include "timeline/TYTimelineView.h"
#include "timeline/TimelineInput.h"

namespace timeline {

TYTimelineRulerView::TYTimelineRulerView(TYTimelineView& view, Qt::Orientation orientation,
                                         QWidget* parent)
    : QWidget(parent), m_view(view), m_orientation(orientation) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
}

bool TYTimelineRulerView::event(QEvent* event) {
  if (event->type() == QEvent::Paint) {
    paintEvent(static_cast<QPaintEvent*>(event));
    return true;
  }
  const auto area = m_orientation == Qt::Horizontal ? TimelineInput::Area::TimeRuler
                                                    : TimelineInput::Area::Titles;
  return m_view.input().handle(area, *event) || QWidget::event(event);
}

void TYTimelineRulerView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  for (const QRect& part : event->region()) {
    m_paintedPixels += qint64{part.width()} * part.height();
    painter.setClipRect(part);
    m_view.drawRulerInView(painter, m_orientation, part);
  }
}

}  // namespace timeline
