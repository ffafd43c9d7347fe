#pragma once

#include <QList>

namespace model {

class Composition;
class QuartzComponent;

/// Which components of a composition are selected: the components' flags, kept together so that
/// asking does not look at every component.
class Selection {
 public:
  explicit Selection(Composition& composition) : m_composition(composition) {}

  /// By their numbers, as the composition lists its components.
  [[nodiscard]] QList<QuartzComponent*> components() const;
  [[nodiscard]] bool isEmpty() const { return m_components.isEmpty(); }
  [[nodiscard]] qsizetype size() const { return m_components.size(); }
  [[nodiscard]] bool contains(const QuartzComponent& component) const;
  /// The one that has been selected the longest, or none.
  [[nodiscard]] QuartzComponent* first() const {
    return m_components.isEmpty() ? nullptr : m_components.first();
  }

  /// Exactly these are selected afterwards.
  void set(const QList<QuartzComponent*>& components);
  void clear() { set({}); }

  /// Follows the flag of one component.
  void follow(QuartzComponent& component);
  /// Forgets components that do not belong to the composition any more. True when there were some.
  bool forgetRemoved();

 private:
  Composition& m_composition;
  QList<QuartzComponent*> m_components;  ///< in the order in which they were selected
};

}  // namespace model
