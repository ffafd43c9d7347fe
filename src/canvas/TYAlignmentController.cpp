#include "canvas/TYAlignmentController.h"

#include <QGuiApplication>
#include <array>

namespace canvas {

TYAlignmentController::TYAlignmentController(model::Composition* composition)
    : TYAlignmentController(composition, [] {
        return QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
      }) {}

std::optional<Alignment> TYAlignmentController::alignmentForTag(int tag) {
  constexpr std::array<int, 12> codes{0, 1, 2, 3, 4, 5, 9, 10, 11, 6, 7, 8};
  if (tag < 0 || tag >= static_cast<int>(codes.size())) return std::nullopt;
  return static_cast<Alignment>(codes[static_cast<size_t>(tag)]);
}

void TYAlignmentController::executeTag(int tag) {
  const auto alignment = alignmentForTag(tag);
  if (!alignment || !m_composition) return;
  doAlignComponents(*m_composition, *alignment,
                    m_anchored() ? Anchor::FirstSelected : Anchor::None);
}

}  // namespace canvas
