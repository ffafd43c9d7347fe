#include "timeline/ReorderGesture.h"

#include <cmath>

#include "model/Composition.h"
#include "store/ObjectContext.h"

namespace timeline {

using model::QuartzComponent;

void moveComponentsToPlace(model::Composition& composition,
                           const QList<QuartzComponent*>& components, qsizetype place,
                           const QString& stepName) {
  const QList<QuartzComponent*> before = composition.componentsSortedByInverseZLevel();
  QList<QuartzComponent*> moved;
  QList<QuartzComponent*> above;
  QList<QuartzComponent*> below;
  for (qsizetype i = 0; i < before.size(); ++i)
    (components.contains(before[i]) ? moved : i < place ? above : below).append(before[i]);
  QList<QuartzComponent*> after = above + moved + below;
  if (after == before) return;
  std::reverse(after.begin(), after.end());
  const store::UndoStep step(*composition.context(), stepName);
  composition.adjustZLevels(after);
}

qsizetype ReorderGesture::placeAt(double y) const {
  const double height = TimelineMeasures::componentHeight;
  const QList<QuartzComponent*> components = stage().rows().components();
  qsizetype nearest = 0;
  double distance = std::abs(y);
  for (qsizetype place = 1; place <= components.size(); ++place) {
    const double there = std::abs(y - rowOfPlace(place) * height);
    if (there < distance) {
      distance = there;
      nearest = place;
    }
  }
  return nearest;
}

int ReorderGesture::rowOfPlace(qsizetype place) const {
  const QList<QuartzComponent*> components = stage().rows().components();
  return place < components.size() ? stage().rows().rowOf(*components[place])
                                   : stage().rows().count();
}

void ReorderGesture::drag(const TimelinePointer& pointer) {
  if (!hit().row.component) return;
  stage().showCursor(Qt::ClosedHandCursor);
  m_place = placeAt(pointer.rows.y());
  TimelineMarks marks;
  marks.insertRow = rowOfPlace(*m_place);
  stage().showMarks(marks);
}

void ReorderGesture::finishDrag() {
  if (!m_place) return;
  model::Composition& composition = stage().composition();
  moveComponentsToPlace(composition, composition.selectedComponents(), *m_place, tr("Arrange"));
}

}  // namespace timeline
