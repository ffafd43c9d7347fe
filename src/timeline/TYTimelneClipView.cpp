#include "timeline/TYTimelneClipView.h"

#include <QPaintEvent>
#include <QPainter>

#include "timeline/TYTimelineView.h"
#include "timeline/TimelineInput.h"

namespace timeline {

TYTimelneClipView::TYTimelneClipView(TYTimelineView& view) : QWidget(nullptr), m_view(view) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  grabGesture(Qt::PinchGesture);
}

bool TYTimelneClipView::event(QEvent* event) {
  if (event->type() == QEvent::Paint) {
    paintEvent(static_cast<QPaintEvent*>(event));
    return true;
  }
  return m_view.input().handle(TimelineInput::Area::Rows, *event) || QWidget::event(event);
}

void TYTimelneClipView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  for (const QRect& part : event->region()) {
    m_paintedPixels += qint64{part.width()} * part.height();
    painter.setClipRect(part);
    m_view.drawClipInView(painter, part);
  }
}

}  // namespace timeline
