#include "timeline/TimelineReading.h"

#include "model/Composition.h"

namespace timeline {

QString TimelineReading::time(double seconds, const Rate& rate) {
  return foundation::Timecode::fromSeconds(seconds, rate).toString();
}

QString TimelineReading::row(const TimelineRow& row, const Rate& rate) {
  if (row.attribute) {
    const int count = int(KeyFrameSelection::timesOf(*row.attribute).size());
    return count == 0 ? tr("%1, not animated").arg(row.attribute->title())
                      : tr("%1, %n key frames", nullptr, count).arg(row.attribute->title());
  }
  if (!row.component) return {};
  QString text = tr("%1, from %2 to %3")
                     .arg(row.component->title(), time(row.component->startTime(), rate),
                          time(row.component->endTime(), rate));
  if (!row.component->visibleInCompositionEditor()) text += tr(", hidden in the editor");
  return text;
}

QString TimelineReading::keyFrame(const KeyFrameReference& keyFrame, const Rate& rate) {
  return tr("Key frame of %1 at %2, value %3")
      .arg(keyFrame.attribute->title(), time(keyFrame.time, rate),
           keyFrame.attribute->valueForTimepoint(keyFrame.time).description());
}

QString TimelineReading::stopFrame(const model::StopFrame& stopFrame, const Rate& rate) {
  const QString& trigger = stopFrame.triggerInformation();
  const QString at = time(stopFrame.timepoint(), rate);
  return trigger.isEmpty() ? tr("Stop frame at %1").arg(at)
                           : tr("Stop frame at %1, trigger %2").arg(at, trigger);
}

}  // namespace timeline
