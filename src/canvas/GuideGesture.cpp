#include "canvas/GuideGesture.h"

#include <cmath>

#include "canvas/CanvasCursors.h"
#include "model/Composition.h"

namespace canvas {

using model::Ruler;

GuideGesture::GuideGesture(CanvasStage& stage, Ruler& guide)
    : m_stage(stage), m_guide(&guide), m_isNew(false), m_horizontal(guide.horizontal()) {
  stage.showCursor(cursorForGuide(m_horizontal));
}

GuideGesture::GuideGesture(CanvasStage& stage, Qt::Orientation orientation)
    : m_stage(stage), m_guide(nullptr), m_isNew(true), m_horizontal(orientation == Qt::Horizontal) {
  stage.showCursor(cursorForGuide(m_horizontal));
}

Ruler* GuideGesture::guideAt(const model::Composition& composition, const QPointF& point) {
  for (Ruler* guide : composition.rulers()) {
    const double distance = (guide->horizontal() ? point.y() : point.x()) - guide->position();
    if (std::abs(distance) < Snapping::grab) return guide;
  }
  return nullptr;
}

double GuideGesture::coordinateOf(const QPointF& point) const {
  return m_horizontal ? point.y() : point.x();
}

bool GuideGesture::isOutside(const QPointF& point) const {
  const model::Composition& composition = m_stage.composition();
  const double end = m_horizontal ? composition.height() : composition.width();
  return coordinateOf(point) < 0 || coordinateOf(point) > end;
}

void GuideGesture::begin(double position) {
  model::Composition& composition = m_stage.composition();
  m_step.open(*composition.context(), m_isNew ? tr("Add Guide") : tr("Move Guide"));
  if (!m_guide) m_guide = composition.addRulerAtPosition(position, m_horizontal);
}

void GuideGesture::update(const Pointer& pointer) {
  if (m_guide ? !m_guide->context() : !pointer.isOverView) return;
  const double position = std::round(coordinateOf(pointer.picture));
  begin(position);
  m_stage.autoscroll(pointer.view);
  m_guide->setPosition(position);
  m_stage.showCursor(isOutside(pointer.picture) ? removalCursor : cursorForGuide(m_horizontal));
}

void GuideGesture::finish(const Pointer& pointer) {
  if (!isOutside(pointer.picture)) {
    m_step.finish();
    return;
  }
  // Back to where it was first, so that undo of the removal finds it there.
  m_step.cancel();
  if (!m_isNew && m_guide->context()) m_stage.composition().removeRuler(*m_guide);
}

void GuideGesture::cancel() {
  m_step.cancel();
}

}  // namespace canvas
