#pragma once

#include <memory>

#include "canvas/CanvasGeometry.h"
#include "canvas/CanvasStage.h"
#include "canvas/Gesture.h"

namespace model {
class QuartzComponent;
class Ruler;
}  // namespace model

namespace canvas {

/// Finds what lies under the pointer and what pressing there begins.
class GesturePicker {
 public:
  enum class Guides { Free, Locked };
  GesturePicker(model::Composition& composition, const CanvasGeometry& geometry,
                Guides guides = Guides::Free)
      : m_composition(composition), m_geometry(geometry), m_guides(guides) {}

  /// The topmost component there, or none.
  [[nodiscard]] model::QuartzComponent* componentAt(const Pointer& pointer) const;
  /// The component's handle there. Zoomed out, the handles of a selected component are painted
  /// larger than they are; they can be grabbed where they are seen.
  [[nodiscard]] int handleAt(const model::QuartzComponent& component, const Pointer& pointer) const;
  /// A guide there that can be moved. A component that was hit there comes first, unless it covers
  /// the whole picture.
  [[nodiscard]] model::Ruler* guideAt(const Pointer& pointer,
                                      const model::QuartzComponent* hit) const;
  [[nodiscard]] Qt::CursorShape cursorAt(const Pointer& pointer) const;

  /// Selects what a menu that is opened there is about: the component, unless it is selected
  /// already; nothing beside all components.
  void selectForMenu(const Pointer& pointer) const;
  /// Changes the selection as pressing there does. Returns what begins; none where pressing did all
  /// that there is to do.
  [[nodiscard]] std::unique_ptr<Gesture> press(CanvasStage& stage, const Pointer& pointer) const;

 private:
  /// A selected component whose handles lie outside of it.
  [[nodiscard]] model::QuartzComponent* smallSelectedAt(const Pointer& pointer) const;
  [[nodiscard]] model::QuartzComponent* targetOf(model::QuartzComponent& hit,
                                                 const Pointer& pointer) const;

  model::Composition& m_composition;
  CanvasGeometry m_geometry;
  Guides m_guides;
};

}  // namespace canvas
