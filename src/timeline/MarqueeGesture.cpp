#include "timeline/MarqueeGesture.h"

#include "model/Composition.h"

namespace timeline {

void MarqueeGesture::drag(const TimelinePointer& pointer) {
  TimelineMarks marks;
  // Drawn straight along a row it has no height, and touches key frames all the same.
  const QRectF rect = QRectF(start().rows, pointer.rows).normalized();
  marks.marquee = rect.united({rect.topLeft(), QSizeF(1, 1)});
  select(marks.marquee, pointer.holds(Qt::ControlModifier));
  stage().showMarks(marks);
}

void MarqueeGesture::select(const QRectF& rect, bool adds) {
  stage().composition().deselectAllKeyFrames();
  const double height = TimelineMeasures::componentHeight;
  const TimelineRows& rows = stage().rows();
  const int last = std::min(rows.count() - 1, static_cast<int>(rect.bottom() / height));
  for (int row = std::max(0, static_cast<int>(rect.top() / height)); row <= last; ++row) {
    model::Attribute* attribute = rows.at(row).attribute;
    if (!attribute) continue;
    for (const double time : KeyFrameSelection::timesOf(*attribute))
      if (stage().geometry().keyFrameRect(time, row).intersects(rect))
        KeyFrameSelection::add({attribute, time});
  }
  if (!adds) return;
  for (const KeyFrameReference& keyFrame : memory().keyFrames()) KeyFrameSelection::add(keyFrame);
}

}  // namespace timeline
