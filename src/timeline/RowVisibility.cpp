#include "timeline/RowVisibility.h"

#include "model/Composition.h"
#include "store/ObjectContext.h"

namespace timeline {

using model::QuartzComponent;

void RowVisibility::toggle(QuartzComponent& component) {
  const bool shows = !component.visibleInCompositionEditor();
  const QList<QuartzComponent*> meant = component.selected()
                                            ? component.composition()->selectedComponents()
                                            : QList<QuartzComponent*>{&component};
  const QString name = meant.size() > 1
                           ? (shows ? tr("Show %n Components", nullptr, int(meant.size()))
                                    : tr("Hide %n Components", nullptr, int(meant.size())))
                           : (shows ? tr("Show %1") : tr("Hide %1")).arg(component.title());
  const store::UndoStep step(*component.context(), name);
  for (QuartzComponent* one : meant) one->setVisibleInCompositionEditor(shows);
}

bool RowVisibility::isSolo(const QuartzComponent& component) {
  bool isAlone = component.visibleInCompositionEditor();
  for (const QuartzComponent* other : component.composition()->components())
    isAlone = isAlone && (other == &component || !other->visibleInCompositionEditor());
  return isAlone;
}

void RowVisibility::solo(QuartzComponent& component) {
  const bool showsAll = isSolo(component);
  const store::UndoStep step(*component.context(),
                             showsAll ? tr("Show All") : tr("Solo %1").arg(component.title()));
  for (QuartzComponent* other : component.composition()->components())
    other->setVisibleInCompositionEditor(showsAll || other == &component);
}

}  // namespace timeline
