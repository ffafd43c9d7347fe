#include "canvas/ComponentAlignment.h"

#include <QCoreApplication>

#include "model/Composition.h"
#include "store/ObjectContext.h"

namespace canvas {

using model::QuartzComponent;

namespace {

using Components = QList<QuartzComponent*>;

bool isDistribution(Alignment alignment) {
  return alignment >= Alignment::DistributeLeftEdges;
}

bool isHorizontal(Alignment alignment) {
  return alignment <= Alignment::RightEdges ||
         (isDistribution(alignment) && alignment <= Alignment::DistributeRightEdges);
}

/// 0 for the lower end of the axis, 1 for the middle, 2 for the upper end.
int placeOf(Alignment alignment) {
  switch (alignment) {
    case Alignment::LeftEdges:
    case Alignment::BottomEdges:
    case Alignment::DistributeLeftEdges:
    case Alignment::DistributeBottomEdges:
      return 0;
    case Alignment::HorizontalCenters:
    case Alignment::VerticalCenters:
    case Alignment::DistributeHorizontalCenters:
    case Alignment::DistributeVerticalCenters:
      return 1;
    default:
      return 2;
  }
}

/// One axis of components' frames, and one place on each of them.
class Axis {
 public:
  explicit Axis(Alignment alignment)
      : m_horizontal(isHorizontal(alignment)), m_share(placeOf(alignment) * 0.5) {}

  [[nodiscard]] double low(const QuartzComponent& c) const {
    return m_horizontal ? c.originX() : c.originY();
  }
  [[nodiscard]] double size(const QuartzComponent& c) const {
    return m_horizontal ? c.width() : c.height();
  }
  [[nodiscard]] double high(const QuartzComponent& c) const { return low(c) + size(c); }
  [[nodiscard]] double middle(const QuartzComponent& c) const { return low(c) + size(c) * 0.5; }
  [[nodiscard]] double place(const QuartzComponent& c) const { return low(c) + size(c) * m_share; }

  void setPlace(QuartzComponent& c, double value) const {
    const double origin = value - size(c) * m_share;
    if (origin == low(c)) return;
    if (m_horizontal)
      c.setOriginX(origin);
    else
      c.setOriginY(origin);
  }

  /// What the places of all shall be when none is the anchor.
  [[nodiscard]] double commonPlace(const Components& components) const {
    double lowest = 4294934527.0;
    double highest = 0;  // also where everything lies below 0
    double biggest = 0;
    double middleOfBiggest = 0;
    for (const QuartzComponent* c : components) {
      lowest = std::min(lowest, low(*c));
      highest = std::max(highest, high(*c));
      if (size(*c) <= biggest) continue;
      biggest = size(*c);
      middleOfBiggest = middle(*c);
    }
    if (m_share == 0) return lowest;
    return m_share == 1 ? highest : middleOfBiggest;
  }

 private:
  bool m_horizontal;
  double m_share;  ///< where on the component: 0 its lower end, 1 its upper end
};

void align(const Axis& axis, const Components& components, const QuartzComponent* anchor) {
  const double place = anchor ? axis.place(*anchor) : axis.commonPlace(components);
  for (QuartzComponent* c : components) axis.setPlace(*c, place);
}

void distribute(const Axis& axis, const Components& components, QuartzComponent& firstSelected) {
  const QuartzComponent* start = &firstSelected;
  const QuartzComponent* end = &firstSelected;
  for (const QuartzComponent* c : components) {
    if (axis.low(*c) < axis.low(*start)) start = c;
    if (axis.high(*c) > axis.high(*end)) end = c;
  }
  const double step =
      (axis.place(*end) - axis.place(*start)) / static_cast<double>(components.size() - 1);
  if (step == 0) return;
  double place = axis.place(*start) + step;
  for (QuartzComponent* c : components) {
    if (c == start || c == end) continue;
    axis.setPlace(*c, place);
    place += step;
  }
}

}  // namespace

qsizetype neededSelection(Alignment alignment) {
  return isDistribution(alignment) ? 3 : 2;
}

void doAlignComponents(model::Composition& composition, Alignment alignment, Anchor anchor) {
  const Components selected = composition.selectedComponents();
  QuartzComponent* first = composition.firstSelected();
  if (selected.size() < neededSelection(alignment) || !first) return;
  const char* name = isDistribution(alignment) ? QT_TRANSLATE_NOOP("canvas", "Distribute")
                                               : QT_TRANSLATE_NOOP("canvas", "Align");
  const store::UndoStep step(*composition.context(), QCoreApplication::translate("canvas", name));
  if (isDistribution(alignment))
    distribute(Axis(alignment), selected, *first);
  else
    align(Axis(alignment), selected, anchor == Anchor::FirstSelected ? first : nullptr);
}

}  // namespace canvas
