#pragma once

#include <QList>

namespace model {
class Composition;
class QuartzComponent;
}  // namespace model

namespace canvas {

/// Components in the order in which the keyboard and screen readers meet them: the frontmost first,
/// those that are seen.
[[nodiscard]] QList<model::QuartzComponent*> componentsToWalk(
    const model::Composition& composition);
/// Selects the one after (before) the selected ones, or the first (last) when none is selected.
/// False, with nothing changed, where there is none.
bool walkSelection(model::Composition& composition, bool forwards);

}  // namespace canvas
