#include "timeline/TimelineHints.h"

namespace timeline {

QString TimelineHints::inRows(const TimelineHit& hit) {
  if (hit.kind == TimelineHit::Kind::KeyFrame)
    return tr(
        "Drag to move. Ctrl adds to the selection, and while dragging stops snapping. "
        "Double-click edits value and time.");
  if (hit.kind == TimelineHit::Kind::Component)
    return hit.part == TimelineHit::Body
               ? tr("Drag to move. Shift selects a range, Ctrl adds, and while dragging stops "
                    "snapping.")
               : tr("Drag to change when it starts or ends. Ctrl stops snapping.");
  return hit.row.attribute ? tr("Drag to select key frames. Ctrl adds to the selection.")
                           : QString();
}

QString TimelineHints::inTimeRuler(bool onStopFrame, bool onEnd) {
  if (onStopFrame)
    return tr(
        "Drag to move the stop frame. Ctrl stops snapping. Double-click edits its trigger "
        "text.");
  if (onEnd) return tr("Drag to change the duration. Ctrl stops snapping.");
  return tr("Click or drag to set the time. Shift snaps. Ctrl with the wheel zooms.");
}

QString TimelineHints::inTitles(const TimelineRow& row, TitlePainter::Part part) {
  if (!row.isComponent()) return {};
  switch (part) {
    case TitlePainter::Part::Disclosure:
      return tr("Click to show the attributes. Alt opens or closes all.");
    case TitlePainter::Part::Eye:
      return tr("Click to hide in the editor. Alt hides all others.");
    case TitlePainter::Part::Title:
      break;
  }
  return tr("Drag to change the order. Double-click or F2 renames.");
}

}  // namespace timeline
