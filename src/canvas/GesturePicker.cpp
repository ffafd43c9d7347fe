#include "canvas/GesturePicker.h"

#include "canvas/CanvasCursors.h"
#include "canvas/GuideGesture.h"
#include "canvas/MoveGesture.h"
#include "canvas/ResizeGesture.h"
#include "canvas/RubberBandGesture.h"
#include "canvas/SelectionOverlay.h"
#include "model/Composition.h"

namespace canvas {

using model::ComponentHandles;
using model::QuartzComponent;

namespace {

bool isGrip(int handle) {
  return handle != ComponentHandles::body && handle != ComponentHandles::noHit;
}

void clickSelects(model::Composition& composition, QuartzComponent& target,
                  const Pointer& pointer) {
  const store::UndoSuspension suspension(*composition.context());
  if (pointer.holds(Qt::ShiftModifier) || pointer.holds(Qt::ControlModifier)) {
    target.setSelected(!target.selected());
  } else if (!target.selected()) {
    composition.clearSelection();
    target.setSelected(true);
  }
}

}  // namespace

QuartzComponent* GesturePicker::componentAt(const Pointer& pointer) const {
  for (QuartzComponent* component : m_composition.componentsSortedByInverseZLevel())
    if (component->handleIndexForLocation(pointer.picture) != ComponentHandles::noHit)
      return component;
  return nullptr;
}

int GesturePicker::handleAt(const QuartzComponent& component, const Pointer& pointer) const {
  const int handle = component.handleIndexForLocation(pointer.picture);
  if (handle != ComponentHandles::body || !component.selected()) return handle;
  if (ComponentHandles::size * m_geometry.zoomFactor() >= SelectionOverlay::leastHandle)
    return handle;
  return SelectionOverlay(component, m_geometry).handleAt(pointer.view);
}

model::Ruler* GesturePicker::guideAt(const Pointer& pointer) const {
  return m_composition.showsRulers() ? GuideGesture::guideAt(m_composition, pointer.picture)
                                     : nullptr;
}

Qt::CursorShape GesturePicker::cursorAt(const Pointer& pointer) const {
  if (const model::Ruler* guide = guideAt(pointer)) return cursorForGuide(guide->horizontal());
  const QuartzComponent* component = componentAt(pointer);
  return component ? cursorForHandle(handleAt(*component, pointer)) : Qt::ArrowCursor;
}

QuartzComponent* GesturePicker::targetOf(QuartzComponent& hit, const Pointer& pointer) const {
  // Where the component itself has a handle, a selected one that it may cover is meant instead.
  if (hit.selected() || !isGrip(hit.handleIndexForLocation(pointer.picture))) return &hit;
  for (QuartzComponent* component : m_composition.componentsSortedByInverseZLevel())
    if (component->selected()) return component;
  return &hit;
}

std::unique_ptr<Gesture> GesturePicker::press(CanvasStage& stage, const Pointer& pointer) const {
  QuartzComponent* hit = componentAt(pointer);
  if (!hit) {
    if (model::Ruler* guide = guideAt(pointer))
      return std::make_unique<GuideGesture>(stage, *guide);
    return std::make_unique<RubberBandGesture>(stage, pointer);
  }
  QuartzComponent* target = targetOf(*hit, pointer);
  const int handle = target->selected() ? handleAt(*target, pointer) : ComponentHandles::body;
  if (isGrip(handle)) return std::make_unique<ResizeGesture>(stage, *target, handle, pointer);
  clickSelects(stage.composition(), *target, pointer);
  if (!target->selected()) return nullptr;
  return std::make_unique<MoveGesture>(stage, pointer);
}

}  // namespace canvas
