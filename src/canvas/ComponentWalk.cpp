#include "canvas/ComponentWalk.h"

#include "model/Composition.h"
#include "store/ObjectContext.h"

namespace canvas {

using model::QuartzComponent;

QList<QuartzComponent*> componentsToWalk(const model::Composition& composition) {
  QList<QuartzComponent*> walked = composition.componentsSortedByInverseZLevel();
  walked.removeIf([](const QuartzComponent* component) {
    return !component->visible() || !component->visibleInCompositionEditor();
  });
  return walked;
}

bool walkSelection(model::Composition& composition, bool forwards) {
  QList<QuartzComponent*> walked = componentsToWalk(composition);
  if (!forwards) std::reverse(walked.begin(), walked.end());
  qsizetype next = 0;
  for (qsizetype i = 0; i < walked.size(); ++i)
    if (walked[i]->selected()) next = i + 1;
  if (next >= walked.size()) return false;
  const store::UndoSuspension suspension(*composition.context());
  composition.clearSelection();
  walked[next]->setSelected(true);
  return true;
}

}  // namespace canvas
