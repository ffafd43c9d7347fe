#pragma once

#include <functional>

#include "canvas/ComponentAlignment.h"

namespace canvas {

/// Turns what the align and distribute controls are tagged with into an alignment of a
/// composition's selection.
class TYAlignmentController {
 public:
  /// Tells whether the first selected component stays where it is; asked once an action.
  using Anchored = std::function<bool()>;

  /// Anchored while Shift is held.
  explicit TYAlignmentController(model::Composition* composition = nullptr);
  TYAlignmentController(model::Composition* composition, Anchored anchored)
      : m_composition(composition), m_anchored(std::move(anchored)) {}

  /// None: actions do nothing.
  void setComposition(model::Composition* composition) { m_composition = composition; }

  /// A segment's or a menu item's tag; those above 11 are nobody's.
  void executeTag(int tag);
  void executeSegmented(int selectedTag) { executeTag(selectedTag); }
  void executeMenu(int tag) { executeTag(tag); }
  /// The operation that a tag stands for; none for unknown tags. The segments run top, middle,
  /// bottom, left, centre, right, which is not the order of the operations.
  [[nodiscard]] static std::optional<Alignment> alignmentForTag(int tag);

 private:
  model::Composition* m_composition;
  Anchored m_anchored;
};

}  // namespace canvas
