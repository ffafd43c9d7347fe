#pragma once

#include <QList>

namespace model {

class Composition;
class QuartzComponent;

/// The stacking order of a composition's components: their levels, the lowest drawn first. After
/// every reordering the levels are 0, 1, 2 and so on.
class ZOrder {
 public:
  explicit ZOrder(Composition& composition) : m_composition(composition) {}

  /// The lowest first; equal levels in the order in which the components were made.
  [[nodiscard]] QList<QuartzComponent*> sorted() const;
  /// Gives the components of the list the levels 0, 1, 2 and so on.
  void adjustLevels(const QList<QuartzComponent*>& ordered);
  /// One after the other moves by the step from where it stood, as far as there is room.
  void move(const QList<QuartzComponent*>& components, qsizetype step);
  /// All together, keeping their order.
  enum class End { Front, Back };
  void sendTo(const QList<QuartzComponent*>& components, End end);
  void swap(QuartzComponent& first, QuartzComponent& second);

 private:
  Composition& m_composition;
};

}  // namespace model
