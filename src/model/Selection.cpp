#include "model/Selection.h"

#include "model/Composition.h"

namespace model {

QList<QuartzComponent*> Selection::components() const {
  QList<QuartzComponent*> sorted = m_components;
  std::sort(sorted.begin(), sorted.end(),
            [](const auto* a, const auto* b) { return a->objectId() < b->objectId(); });
  return sorted;
}

bool Selection::contains(const QuartzComponent& component) const {
  return component.selected() && component.composition() == &m_composition;
}

void Selection::set(const QList<QuartzComponent*>& components) {
  const QList<QuartzComponent*> before = m_components;
  const QSet<QuartzComponent*> wanted(components.begin(), components.end());
  for (QuartzComponent* component : before)
    if (!wanted.contains(component)) component->setSelected(false);
  for (QuartzComponent* component : components) component->setSelected(true);
}

void Selection::follow(QuartzComponent& component) {
  m_components.removeOne(&component);
  if (component.selected()) m_components.append(&component);
}

bool Selection::forgetRemoved() {
  return 0 < m_components.removeIf([this](const QuartzComponent* component) {
    return component->composition() != &m_composition;
  });
}

}  // namespace model
