#include "timeline/TimelineMenu.h"

#include <QContextMenuEvent>
#include <QMenu>

#include "model/Composition.h"
#include "store/ObjectContext.h"
#include "timeline/RowVisibility.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TimelineEditors.h"
#include "timeline/TimelinePicker.h"
#include "timeline/TimelineScene.h"

namespace timeline {

using model::Attribute;
using model::QuartzComponent;

void TimelineMenu::fill(QMenu& menu, TYTimelineView& view, const TimelineTarget& target) {
  if (target.attribute)
    addForAttribute(menu, view, target);
  else if (target.component)
    addForComponent(menu, view, *target.component);
  else if (target.stopFrame)
    addForStopFrame(menu, view, *target.stopFrame);
  else
    addForTime(menu, view, target.time);
  menu.addSeparator();
  menu.addAction(tr("Zoom to Fit"), &view, &TYTimelineView::zoomToFit);
}

void TimelineMenu::addForComponent(QMenu& menu, TYTimelineView& view, QuartzComponent& component) {
  menu.addAction(tr("Rename"), QKeySequence(Qt::Key_F2), &view,
                 [&] { view.editors().rename(component); });
  menu.addAction(
      component.visibleInCompositionEditor() ? tr("Hide in Editor") : tr("Show in Editor"), &view,
      [&] { RowVisibility::toggle(component); });
  menu.addAction(RowVisibility::isSolo(component) ? tr("Show All") : tr("Solo"), &view,
                 [&] { RowVisibility::solo(component); });
  menu.addSeparator();
  const bool opens = !component.expanded();
  menu.addAction(opens ? tr("Show Attributes") : tr("Hide Attributes"), &view,
                 [&view, &component, opens] {
                   view.setExpanded(component, opens, TYTimelineView::Expanded::One);
                 });
  menu.addAction(tr("Show All Attributes"), &view,
                 [&] { view.setExpanded(component, true, TYTimelineView::Expanded::All); });
  menu.addAction(tr("Hide All Attributes"), &view,
                 [&] { view.setExpanded(component, false, TYTimelineView::Expanded::All); });
}

void TimelineMenu::addForAttribute(QMenu& menu, TYTimelineView& view,
                                   const TimelineTarget& target) {
  Attribute& attribute = *target.attribute;
  const double time = target.isKeyFrame ? target.time : view.composition()->editorTimepoint();
  if (target.isKeyFrame)
    menu.addAction(tr("Edit Key Frame..."), &view, [&view, &attribute, time] {
      view.editors().editKeyFrame({&attribute, time});
    });
  if (attribute.animateable() && attribute.hasKeyframeAtTimePoint(time)) {
    menu.addAction(tr("Remove Key Frame"), &view, [&attribute, time] {
      const store::UndoStep step(*attribute.context(), tr("Remove Key Frame"));
      attribute.deleteTimepoint(time);
    });
  } else {
    menu.addAction(tr("Add Key Frame at Marker"), &view, [&attribute, time] {
      const store::UndoStep step(*attribute.context(), tr("Add Key Frame"));
      attribute.addTimepoint(time, attribute.currentValue());
    });
  }
  if (!attribute.animateable()) return;
  menu.addAction(tr("Select All Key Frames"), &view, [&attribute] {
    for (const double one : KeyFrameSelection::timesOf(attribute))
      KeyFrameSelection::add({&attribute, one});
  });
  menu.addAction(tr("Stop Animating"), &view, [&attribute] {
    const store::UndoStep step(*attribute.context(), tr("Stop Animating"));
    attribute.setAnimateable(false);
  });
}

void TimelineMenu::addForStopFrame(QMenu& menu, TYTimelineView& view, model::StopFrame& stopFrame) {
  menu.addAction(tr("Edit Trigger Text..."), &view,
                 [&] { view.editors().editTriggerText(stopFrame); });
  menu.addAction(tr("Remove Stop Frame"), &view,
                 [&] { view.composition()->removeStopFrame(stopFrame); });
}

void TimelineMenu::addForTime(QMenu& menu, TYTimelineView& view, double time) {
  model::Composition& composition = *view.composition();
  if (!composition.stopFrameAtTimepoint(time))
    menu.addAction(tr("Add Stop Frame Here"), &view,
                   [&composition, time] { composition.addStopFrame(time); });
  menu.addAction(tr("End Composition Here"), &view,
                 [&composition, time] {
                   const store::UndoStep step(*composition.context(), tr("Change Duration"));
                   composition.setDuration(time);
                 })
      ->setEnabled(time > 0);
}

TimelineTarget TimelineMenu::targetAt(const TimelineScene& scene, const QPoint& point) {
  TimelineTarget target;
  target.time = scene.composition->editorTimepoint();  // where the place tells none
  const QPointF inClip(point.x() - scene.componentsWidth,
                       point.y() - TYTimelineGeometry::rulerThickness);
  const TimelinePicker picker(scene);
  if (inClip.x() >= 0)
    target.time = std::max(
        0.0, scene.geometry.timeFromPosition(inClip.x() + 0.5, TYTimelineGeometry::Space::Ruler));
  if (inClip.y() < 0) {
    if (inClip.x() >= 0) target.stopFrame = picker.stopFrameAt({inClip.x(), double(point.y())});
    if (target.stopFrame) target.time = target.stopFrame->timepoint();
    return target;
  }
  const TimelineHit hit = picker.hitAt(inClip + scene.geometry.visibleOrigin());
  target.component = hit.row.component;
  target.attribute = hit.row.attribute;
  if (hit.kind == TimelineHit::Kind::KeyFrame && inClip.x() >= 0) {
    target.isKeyFrame = true;
    target.time = hit.keyFrame.time;
  }
  return target;
}

TimelineTarget TimelineMenu::currentTarget(const TimelineScene& scene) {
  TimelineTarget target;
  target.time = scene.currentTime.value_or(scene.composition->editorTimepoint());
  if (scene.currentRow < 0) {
    if (scene.currentTime) target.stopFrame = scene.composition->stopFrameAtTimepoint(target.time);
    return target;
  }
  const TimelineRow row = scene.rows.at(scene.currentRow);
  target.component = row.component;
  target.attribute = row.attribute;
  target.isKeyFrame = row.attribute && scene.currentTime;
  return target;
}

void TimelineMenu::popUp(TYTimelineView& view, const QContextMenuEvent& event) {
  const TimelineScene& scene = view.scene();
  const bool byKeyboard = event.reason() == QContextMenuEvent::Keyboard;
  const TimelineTarget target = byKeyboard ? currentTarget(scene) : targetAt(scene, event.pos());
  if (target.component && !target.component->selected()) {
    scene.composition->clearSelection();
    target.component->setSelected(true);
  }
  if (target.isKeyFrame && !target.attribute->isTimePointSelected(target.time)) {
    scene.composition->deselectAllKeyFrames();
    KeyFrameSelection::add({target.attribute, target.time});
  }
  auto* menu = new QMenu(&view);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  fill(*menu, view, target);
  view.host().fillContextMenu(*menu, target);
  const double top = scene.currentRow * TimelineMeasures::componentHeight -
                     scene.geometry.visibleOrigin().y() + TYTimelineGeometry::rulerThickness;
  const QPoint beside(static_cast<int>(TimelineMeasures::componentIndent1),
                      qBound(0, static_cast<int>(top), view.height()));
  menu->popup(byKeyboard ? view.mapToGlobal(beside) : event.globalPos());
}

}  // namespace timeline
