#include "timeline/TimelineRows.h"

#include <algorithm>

#include "model/Composition.h"

namespace timeline {

using model::Attribute;
using model::QuartzComponent;

void TimelineRows::setComposition(const model::Composition* composition) {
  m_composition = composition;
  setNeedsUpdate();
}

void TimelineRows::update() const {
  if (m_isUpToDate) return;
  m_isUpToDate = true;
  m_count = 0;
  m_spans.clear();
  m_firstRows.clear();
  m_attributes.clear();
  if (!m_composition) return;
  for (QuartzComponent* component : m_composition->componentsSortedByInverseZLevel()) {
    m_spans.append({component, m_count});
    m_firstRows.insert(component, m_count++);
    if (!component->expanded()) continue;
    for (const Attribute* attribute : component->attributes())
      m_count += attribute->animationPossible() ? 1 : 0;
  }
}

int TimelineRows::count() const {
  update();
  return m_count;
}

const QList<Attribute*>& TimelineRows::attributesOf(const QuartzComponent& component) const {
  const auto known = m_attributes.constFind(&component);
  if (known != m_attributes.constEnd()) return *known;
  return *m_attributes.insert(&component, component.children());
}

TimelineRow TimelineRows::at(int row) const {
  if (row < 0 || row >= count()) return {};
  const auto after =
      std::upper_bound(m_spans.cbegin(), m_spans.cend(), row,
                       [](int wanted, const Span& span) { return wanted < span.first; });
  const Span& span = *std::prev(after);
  if (row == span.first) return {span.component, nullptr};
  return {span.component, attributesOf(*span.component).value(row - span.first - 1)};
}

QList<QuartzComponent*> TimelineRows::components() const {
  update();
  QList<QuartzComponent*> list;
  for (const Span& span : std::as_const(m_spans)) list.append(span.component);
  return list;
}

int TimelineRows::rowOf(const QuartzComponent& component) const {
  update();
  return m_firstRows.value(&component, -1);
}

int TimelineRows::rowOf(const Attribute& attribute) const {
  const auto* component = dynamic_cast<const QuartzComponent*>(attribute.component());
  const int first = component ? rowOf(*component) : -1;
  if (first < 0 || !component->expanded()) return -1;
  const qsizetype place = attributesOf(*component).indexOf(&attribute);
  return place < 0 ? -1 : first + 1 + static_cast<int>(place);
}

void TimelineRows::keepOnly(int first, int last) {
  update();
  m_attributes.removeIf([&](const auto& entry) {
    const int top = m_firstRows.value(entry.key(), -1);
    return top > last || top + static_cast<int>(entry.value().size()) < first;
  });
}

}  // namespace timeline
