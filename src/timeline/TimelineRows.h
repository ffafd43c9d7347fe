#pragma once

#include <QHash>
#include <QList>

#include "store/ManagedObject.h"

namespace model {
class Attribute;
class Composition;
class QuartzComponent;
}  // namespace model

namespace timeline {

/// A row of the timeline: a component, or below an expanded one an attribute of it.
struct TimelineRow {
  model::QuartzComponent* component = nullptr;
  model::Attribute* attribute = nullptr;  ///< none in the component's own row
  [[nodiscard]] bool isComponent() const { return component && !attribute; }
  friend bool operator==(const TimelineRow&, const TimelineRow&) = default;
};

/// The rows of a composition from the top, the frontmost component first. Keeps where each
/// component's rows begin; the attributes of a component are listed when one of its rows is asked
/// for, and forgotten with keepOnly().
class TimelineRows {
 public:
  /// None has no rows.
  void setComposition(const model::Composition* composition);
  /// Components came, went, moved, were opened or closed.
  void setNeedsUpdate() { m_isUpToDate = false; }

  [[nodiscard]] int count() const;
  /// Empty beyond the last row.
  [[nodiscard]] TimelineRow at(int row) const;
  [[nodiscard]] QList<model::QuartzComponent*> components() const;
  /// -1 for what has no row.
  [[nodiscard]] int rowOf(const model::QuartzComponent& component) const;
  [[nodiscard]] int rowOf(const model::Attribute& attribute) const;
  /// Forgets the lists of components that have no row from the first to the last.
  void keepOnly(int first, int last);
  [[nodiscard]] qsizetype listedComponents() const { return m_attributes.size(); }

 private:
  struct Span {
    model::QuartzComponent* component;
    int first;
  };
  void update() const;
  [[nodiscard]] const QList<model::Attribute*>& attributesOf(
      const model::QuartzComponent& component) const;

  const model::Composition* m_composition = nullptr;
  mutable bool m_isUpToDate = false;
  mutable int m_count = 0;
  mutable QList<Span> m_spans;
  mutable QHash<const model::QuartzComponent*, int> m_firstRows;
  mutable QHash<const model::QuartzComponent*, QList<model::Attribute*>> m_attributes;
};

}  // namespace timeline
