#pragma once

#include <QtGlobal>
#include <optional>

namespace model {
class Composition;
}

namespace canvas {

/// What can be done to the selected components, by the codes of the commands.
enum class Alignment {
  LeftEdges = 0,
  HorizontalCenters = 1,
  RightEdges = 2,
  TopEdges = 3,
  VerticalCenters = 4,
  BottomEdges = 5,
  DistributeLeftEdges = 6,
  DistributeHorizontalCenters = 7,
  DistributeRightEdges = 8,
  DistributeTopEdges = 9,
  DistributeVerticalCenters = 10,
  DistributeBottomEdges = 11
};

enum class Anchor { None, FirstSelected };

/// How many components must be selected: two to align, three to distribute.
[[nodiscard]] qsizetype neededSelection(Alignment alignment);

/// Aligns or distributes the selected components as one undo step; does nothing with too few. In
/// picture coordinates (y up).
///
/// Not anchored, edges come from the whole selection and centres from its biggest component.
/// Distributing keeps the two outermost components and places the others evenly between them, in
/// the order of the selection, not in the order in which they lie.
void doAlignComponents(model::Composition& composition, Alignment alignment, Anchor anchor);

}  // namespace canvas
