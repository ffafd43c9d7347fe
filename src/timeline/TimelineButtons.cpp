#include "timeline/TYTimelineView.h"

namespace timeline {

bool TYTimelineView::clickInCorner(const QPointF&) {
  return false;
}
bool TYTimelineView::clickOnAttributeButtons(int, const QPointF&) {
  return false;
}
void TYTimelineView::drawButtons(QPainter&, Qt::Orientation, const QRectF&) {}
void TYTimelineView::updateButtons() {}

}  // namespace timeline
