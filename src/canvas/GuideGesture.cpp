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

Ruler* GuideGesture::guideAt(const model::Composition& composition, const QPointF& point,
                             double reach) {
  for (Ruler* guide : composition.rulers()) {
    const double distance = (guide->horizontal() ? point.y() : point.x()) - guide->position();
    if (std::abs(distance) < reach) return guide;
  }
  return nullptr;
}

double GuideGesture::coordinateOf(const QPointF& point) const {
  return m_horizontal ? point.y() : point.x();
}

bool GuideGesture::isOutside(const Pointer& pointer) const {
  const QPointF& point = pointer.picture;
  const bool isOnRuler = (m_horizontal ? pointer.screen.y() : pointer.screen.x()) < 0;
  if (isOnRuler) return true;
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
  const bool removes = isOutside(pointer);
  if (!removes) m_stage.autoscroll(pointer.view);
  m_guide->setPosition(position);
  m_stage.showCursor(removes ? removalCursor : cursorForGuide(m_horizontal));
  m_stage.showNote(removes ? tr("Remove") : (m_horizontal ? tr("Y %1") : tr("X %1")).arg(position),
                   pointer.view);
}

void GuideGesture::finish(const Pointer& pointer) {
  m_stage.showNote({}, {});
  if (!isOutside(pointer)) {
    m_step.finish();
    return;
  }
  // Back to where it was first, so that undo of the removal finds it there.
  m_step.cancel();
  if (!m_isNew && m_guide->context()) m_stage.composition().removeRuler(*m_guide);
}

void GuideGesture::cancel() {
  m_stage.showNote({}, {});
  m_step.cancel();
}

}  // namespace canvas
