#include "timeline/TimelineKeyboard.h"

#include <QAccessible>
#include <QKeyEvent>

#include "model/Composition.h"
#include "store/ObjectContext.h"
#include "timeline/ComponentGesture.h"
#include "timeline/ReorderGesture.h"
#include "timeline/RowSelecting.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TimelineEditors.h"
#include "timeline/TimelineInput.h"
#include "timeline/TimelineReading.h"
#include "timeline/TimelineScene.h"
#include "timeline/TransportCommands.h"

namespace timeline {

using model::Composition;

namespace {

constexpr int manyFrames = 10;

bool isSideways(const QKeyEvent& event) {
  return event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
}

int directionOf(const QKeyEvent& event) {
  const int key = event.key();
  return key == Qt::Key_Right || key == Qt::Key_Down || key == Qt::Key_PageDown ? 1 : -1;
}

bool isDelete(const QKeyEvent& event) {
  return event.key() == Qt::Key_Delete || event.key() == Qt::Key_Backspace;
}

}  // namespace

bool TimelineKeyboard::claims(const QKeyEvent& event) const {
  if (isDelete(event)) return currentStopFrame() != nullptr;
  const bool alt = event.modifiers().testFlag(Qt::AltModifier);
  if (isSideways(event)) return alt || event.modifiers().testFlag(Qt::ControlModifier);
  return alt && (event.key() == Qt::Key_Up || event.key() == Qt::Key_Down);
}

bool TimelineKeyboard::press(const QKeyEvent& event) {
  if (!m_view.composition()) return false;
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
      if (event.modifiers().testFlag(Qt::AltModifier))
        arrange(directionOf(event));
      else
        moveRow(directionOf(event), shift);
      return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      moveRow(directionOf(event) * rowsOfAPage(), shift);
      return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      return removeStopFrame();
    case Qt::Key_BracketLeft:
    case Qt::Key_BracketRight:
      if (event.modifiers().testFlag(Qt::ControlModifier)) return false;
      moveEdge(event.key() == Qt::Key_BracketLeft ? TimelineHit::StartEdge : TimelineHit::EndEdge);
      return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
      if (event.modifiers().testFlag(Qt::AltModifier))
        walk(directionOf(event), shift);
      else if (event.modifiers().testFlag(Qt::ControlModifier))
        moveByFrames(directionOf(event) * (shift ? manyFrames : 1));
      else
        return false;
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      edit();
      return true;
    case Qt::Key_F2:
      if (row().component) m_view.editors().rename(*row().component);
      return row().component != nullptr;
    case Qt::Key_Plus:
    case Qt::Key_Minus:
      if (!row().component || event.modifiers().testFlag(Qt::ControlModifier)) return false;
      m_view.setExpanded(*row().component, event.key() == Qt::Key_Plus,
                         TYTimelineView::Expanded::One);
      return true;
    default:
      return false;
  }
}

TimelineRow TimelineKeyboard::row() const {
  return m_view.rows().at(m_view.currentRow());
}

int TimelineKeyboard::rowsOfAPage() const {
  return std::max(1, int(m_view.visibleSize().height() / TimelineMeasures::componentHeight) - 1);
}

void TimelineKeyboard::moveRow(int step, bool extends) {
  const int wanted = qBound(-1, m_view.currentRow() + step, m_view.rows().count() - 1);
  m_view.setCurrentRow(wanted);
  m_view.revealRow(wanted);
  const TimelineRow now = row();
  if (now.isComponent()) {
    if (!extends) m_view.composition()->clearSelection();
    now.component->setSelected(true);
  }
  announce();
}

void TimelineKeyboard::walk(int step, bool adds) {
  TimelineScene& scene = m_view.scene();
  const TimelineRow now = row();
  const QList<double> times = scene.currentRow < 0 ? m_view.composition()->stopFrameTimepoints()
                              : now.attribute      ? KeyFrameSelection::timesOf(*now.attribute)
                                                   : QList<double>();
  if (times.isEmpty())
    return m_view.host().showHint(
        scene.currentRow < 0 ? tr("No stop frames. M adds one at the marker.")
        : now.attribute      ? tr("No key frames. K adds one at the marker.")
                             : tr("Key frames are in the rows of attributes; plus opens these."));
  qsizetype place = scene.currentTime ? times.indexOf(*scene.currentTime) : -1;
  if (place < 0) {
    // From the editor time on.
    const double here = m_view.composition()->editorTimepoint();
    place = std::upper_bound(times.cbegin(), times.cend(), here) - times.cbegin();
    if (step > 0) --place;
  }
  place = qBound(qsizetype{0}, place + step, times.size() - 1);
  scene.currentTime = times[place];
  if (now.attribute) {
    if (!adds) m_view.composition()->deselectAllKeyFrames();
    KeyFrameSelection::add({now.attribute, *scene.currentTime});
  }
  m_view.revealTime(*scene.currentTime);
  m_view.updateAll();
  announce();
}

void TimelineKeyboard::moveByFrames(int frames) {
  if (m_view.currentRow() < 0) {
    model::StopFrame* stopFrame = currentStopFrame();
    if (!stopFrame) return;
    const auto& rate = m_view.timelineGeometry().content().rate;
    TransportCommands(*m_view.composition())
        .moveStopFrame(*stopFrame, stopFrame->timepoint() + frames / rate.framesPerSecond());
    m_view.scene().currentTime = stopFrame->timepoint();
    m_view.revealTime(stopFrame->timepoint());
  } else if (!KeyFrameSelection(*m_view.composition()).isEmpty()) {
    moveKeyFrames(frames);
  } else {
    moveComponents(frames);
  }
  announce();
}

void TimelineKeyboard::arrange(int step) {
  Composition& composition = *m_view.composition();
  const QList<model::QuartzComponent*> order = composition.componentsSortedByInverseZLevel();
  const QList<model::QuartzComponent*> selected = composition.selectedComponents();
  if (selected.isEmpty()) return;
  qsizetype first = order.size();
  qsizetype last = 0;
  for (model::QuartzComponent* component : selected) {
    first = std::min(first, order.indexOf(component));
    last = std::max(last, order.indexOf(component));
  }
  moveComponentsToPlace(composition, selected,
                        qBound(qsizetype{0}, step < 0 ? first - 1 : last + 2, order.size()),
                        tr("Arrange"));
}

bool TimelineKeyboard::removeStopFrame() {
  model::StopFrame* stopFrame = currentStopFrame();
  if (!stopFrame) return false;
  m_view.composition()->removeStopFrame(*stopFrame);
  m_view.scene().currentTime.reset();
  announce();
  return true;
}

void TimelineKeyboard::moveEdge(TimelineHit::Part part) {
  Composition& composition = *m_view.composition();
  const double time = composition.editorTimepoint();
  if (m_view.currentRow() < 0) {
    if (part != TimelineHit::EndEdge || time <= 0) return;
    const store::UndoStep step(*composition.context(), tr("Change Duration"));
    composition.setDuration(time);
    return announce();
  }
  const QList<model::QuartzComponent*> selected = composition.selectedComponents();
  if (selected.isEmpty()) return;
  const store::UndoStep step(*composition.context(), ComponentGesture::stepName(part, selected));
  for (model::QuartzComponent* component : selected)
    if (part == TimelineHit::StartEdge)
      ComponentTiming::adjustStartTime(*component, ComponentTiming::Duration::Change,
                                       time - component->startTime());
    else if (time > component->startTime())
      component->setEndTime(time);
  announce();
}

void TimelineKeyboard::moveComponents(int frames) {
  Composition& composition = *m_view.composition();
  const QList<model::QuartzComponent*> selected = composition.selectedComponents();
  if (selected.isEmpty()) return;
  const store::UndoStep step(*composition.context(),
                             ComponentGesture::stepName(TimelineHit::Body, selected));
  const double delta = frames / m_view.timelineGeometry().content().rate.framesPerSecond();
  for (model::QuartzComponent* component : selected)
    ComponentTiming::adjustStartTime(*component, ComponentTiming::Duration::Keep, delta);
}

void TimelineKeyboard::moveKeyFrames(int frames) {
  Composition& composition = *m_view.composition();
  const int count = int(KeyFrameSelection(composition).keyFrames().size());
  const store::UndoStep step(
      *composition.context(),
      count == 1 ? tr("Move Key Frame") : tr("Move %n Key Frames", nullptr, count));
  const double delta = frames / m_view.timelineGeometry().content().rate.framesPerSecond();
  const TimelineRow now = row();
  std::optional<double>& current = m_view.scene().currentTime;
  const qsizetype place =
      now.attribute && current ? now.attribute->selectedTimepoints().indexOf(*current) : -1;
  for (model::Attribute* attribute : composition.attributesWithSelectedKeyframes())
    attribute->adjustTimepointsBy(delta, model::Attribute::Moved::OnlySelected);
  if (place >= 0) current = now.attribute->selectedTimepoints().value(place);
}

void TimelineKeyboard::edit() {
  const TimelineRow now = row();
  const std::optional<double> time = m_view.scene().currentTime;
  if (m_view.currentRow() < 0) {
    if (model::StopFrame* stopFrame = currentStopFrame())
      m_view.editors().editTriggerText(*stopFrame);
  } else if (now.attribute && time) {
    m_view.editors().editKeyFrame({now.attribute, *time});
  } else if (now.isComponent()) {
    m_view.setExpanded(*now.component, !now.component->expanded(), TYTimelineView::Expanded::One);
  }
}

model::StopFrame* TimelineKeyboard::currentStopFrame() const {
  const TimelineScene& scene = m_view.scene();
  return scene.currentRow < 0 && scene.currentTime && scene.composition
             ? scene.composition->stopFrameAtTimepoint(*scene.currentTime)
             : nullptr;
}

QString TimelineKeyboard::description() const {
  const TimelineScene& scene = m_view.scene();
  if (!scene.composition) return {};
  if (model::StopFrame* stopFrame = currentStopFrame())
    return TimelineReading::stopFrame(*stopFrame, scene.geometry.content().rate);
  if (scene.currentRow < 0)
    return tr("Time ruler, duration %1")
        .arg(TimelineReading::time(scene.composition->duration(), scene.geometry.content().rate));
  const TimelineRow now = row();
  if (now.attribute && scene.currentTime)
    return TimelineReading::keyFrame({now.attribute, *scene.currentTime},
                                     scene.geometry.content().rate);
  return TimelineReading::row(now, scene.geometry.content().rate);
}

void TimelineKeyboard::announce() {
  m_view.host().showHint(description());
  if (!QAccessible::isActive()) return;
  QAccessibleInterface* view = QAccessible::queryAccessibleInterface(&m_view);
  if (QAccessibleInterface* focused = view ? view->focusChild() : nullptr) {
    QAccessibleEvent event(focused, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
  }
}

}  // namespace timeline
