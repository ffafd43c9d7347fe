#include "timeline/RowSelecting.h"

#include <algorithm>

#include "model/Composition.h"
#include "timeline/TimelineRows.h"

namespace timeline {

using model::Composition;
using model::QuartzComponent;

void RowSelecting::selectComponent(Composition& composition, const TimelineRows& rows,
                                   QuartzComponent& component, Qt::KeyboardModifiers modifiers) {
  const bool command = modifiers.testFlag(Qt::ControlModifier);
  if (component.selected()) {
    if (command) component.setSelected(false);
    return;
  }
  const int row = rows.rowOf(component);
  if (modifiers.testFlag(Qt::ShiftModifier) && m_componentLastSelected >= 0) {
    const auto [first, last] = std::minmax(row, m_componentLastSelected);
    for (QuartzComponent* other : rows.components())
      if (const int place = rows.rowOf(*other); place >= first && place <= last)
        other->setSelected(true);
  } else if (!modifiers.testFlag(Qt::ShiftModifier) && !command) {
    composition.clearSelection();
  }
  component.setSelected(true);
  m_componentLastSelected = row;
}

void RowSelecting::selectKeyFrame(Composition& composition, const TimelineRows& rows,
                                  const KeyFrameReference& keyFrame,
                                  Qt::KeyboardModifiers modifiers) {
  const bool command = modifiers.testFlag(Qt::ControlModifier);
  if (KeyFrameSelection::contains(keyFrame)) {
    if (command) KeyFrameSelection::remove(keyFrame);
    return;
  }
  if (!command) composition.deselectAllKeyFrames();
  KeyFrameSelection::add(keyFrame);
  auto* component = dynamic_cast<QuartzComponent*>(keyFrame.attribute->component());
  if (component && !component->selected())
    selectComponent(composition, rows, *component, modifiers);
}

void RowSelecting::clear(Composition& composition) {
  composition.clearSelection();
  composition.deselectAllKeyFrames();
}

}  // namespace timeline
