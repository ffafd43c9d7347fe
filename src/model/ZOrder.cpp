#include "model/ZOrder.h"

#include "model/Composition.h"
#include "store/ObjectContext.h"

namespace model {

QList<QuartzComponent*> ZOrder::sorted() const {
  QList<QuartzComponent*> components = m_composition.components().list();
  std::stable_sort(components.begin(), components.end(),
                   [](const auto* a, const auto* b) { return a->zLevelComparison(*b); });
  return components;
}

void ZOrder::adjustLevels(const QList<QuartzComponent*>& ordered) {
  const store::UndoStep step(*m_composition.context());
  quint64 level = 0;
  for (QuartzComponent* component : ordered) component->setZLevel(level++);
}

void ZOrder::move(const QList<QuartzComponent*>& components, qsizetype step) {
  const QList<QuartzComponent*> before = sorted();
  QHash<const QuartzComponent*, qsizetype> placeBefore;
  for (qsizetype i = 0; i < before.size(); ++i) placeBefore.insert(before[i], i);
  QList<QuartzComponent*> order = before;
  for (QuartzComponent* component : components) {
    const qsizetype place =
        std::clamp<qsizetype>(placeBefore.value(component) + step, 0, before.size() - 1);
    order.removeOne(component);
    order.insert(place, component);
  }
  adjustLevels(order);
}

void ZOrder::sendTo(const QList<QuartzComponent*>& components, End end) {
  const QSet<QuartzComponent*> moved(components.begin(), components.end());
  QList<QuartzComponent*> inOrder;
  QList<QuartzComponent*> others;
  for (QuartzComponent* component : sorted())
    (moved.contains(component) ? inOrder : others).append(component);
  adjustLevels(end == End::Front ? others + inOrder : inOrder + others);
}

void ZOrder::swap(QuartzComponent& first, QuartzComponent& second) {
  QList<QuartzComponent*> order = sorted();
  order.swapItemsAt(order.indexOf(&first), order.indexOf(&second));
  adjustLevels(order);
}

}  // namespace model
