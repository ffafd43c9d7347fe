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

QuartzComponent* GesturePicker::smallSelectedAt(const Pointer& pointer) const {
  for (QuartzComponent* component : m_composition.componentsSortedByInverseZLevel()) {
    if (!SelectionOverlay::isShown(*component)) continue;
    const SelectionOverlay overlay(*component, m_geometry);
    if (!overlay.givesWay()) continue;
    if (overlay.holdContains(pointer.view) || isGrip(overlay.handleAt(pointer.view)))
      return component;
  }
  return nullptr;
}

QuartzComponent* GesturePicker::componentAt(const Pointer& pointer) const {
  if (QuartzComponent* small = smallSelectedAt(pointer)) return small;
  for (QuartzComponent* component : m_composition.componentsSortedByInverseZLevel())
    if (component->handleIndexForLocation(pointer.picture) != ComponentHandles::noHit)
      return component;
  return nullptr;
}

int GesturePicker::handleAt(const QuartzComponent& component, const Pointer& pointer) const {
  const int handle = component.handleIndexForLocation(pointer.picture);
  const SelectionOverlay overlay(component, m_geometry);
  if (component.selected() && overlay.givesWay()) return overlay.handleAt(pointer.view);
  if (handle != ComponentHandles::body || !component.selected()) return handle;
  if (ComponentHandles::size * m_geometry.zoomFactor() >= SelectionOverlay::leastHandle)
    return handle;
  return overlay.handleAt(pointer.view);
}

model::Ruler* GesturePicker::guideAt(const Pointer& pointer, const QuartzComponent* hit) const {
  if (m_guides == Guides::Locked || !m_composition.showsRulers()) return nullptr;
  // One over a background could never be taken otherwise.
  const QRectF picture(QPointF(), m_composition.size());
  const bool isFree = !hit || (hit->drawingFrame().contains(picture) && hit->zRotation() == 0 &&
                               !isGrip(handleAt(*hit, pointer)));
  const double zoom = std::min(1.0, static_cast<double>(m_geometry.zoomFactor()));
  return isFree && zoom > 0
             ? GuideGesture::guideAt(m_composition, pointer.picture, Snapping::grab / zoom)
             : nullptr;
}

Qt::CursorShape GesturePicker::cursorAt(const Pointer& pointer) const {
  const QuartzComponent* component = componentAt(pointer);
  if (const model::Ruler* guide = guideAt(pointer, component))
    return cursorForGuide(guide->horizontal());
  return component ? cursorForHandle(handleAt(*component, pointer)) : Qt::ArrowCursor;
}

QuartzComponent* GesturePicker::targetOf(QuartzComponent& hit, const Pointer& pointer) const {
  // Where the component itself has a handle, a selected one that it may cover is meant instead.
  if (hit.selected() || !isGrip(hit.handleIndexForLocation(pointer.picture))) return &hit;
  for (QuartzComponent* component : m_composition.componentsSortedByInverseZLevel())
    if (component->selected()) return component;
  return &hit;
}

void GesturePicker::selectForMenu(const Pointer& pointer) const {
  QuartzComponent* hit = componentAt(pointer);
  if (hit && hit->selected()) return;
  const store::UndoSuspension suspension(*m_composition.context());
  m_composition.clearSelection();
  if (hit) hit->setSelected(true);
}

std::unique_ptr<Gesture> GesturePicker::press(CanvasStage& stage, const Pointer& pointer) const {
  QuartzComponent* hit = componentAt(pointer);
  if (model::Ruler* guide = guideAt(pointer, hit))
    return std::make_unique<GuideGesture>(stage, *guide);
  if (!hit) return std::make_unique<RubberBandGesture>(stage, pointer);
  QuartzComponent* target = targetOf(*hit, pointer);
  const int handle = target->selected() ? handleAt(*target, pointer) : ComponentHandles::body;
  if (isGrip(handle)) return std::make_unique<ResizeGesture>(stage, *target, handle, pointer);
  clickSelects(stage.composition(), *target, pointer);
  if (!target->selected()) return nullptr;
  return std::make_unique<MoveGesture>(
      stage, pointer,
      pointer.holds(Qt::AltModifier) ? MoveGesture::Moves::Copies : MoveGesture::Moves::Components);
}

}  // namespace canvas
