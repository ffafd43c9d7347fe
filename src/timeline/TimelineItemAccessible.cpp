#include "timeline/TimelineItemAccessible.h"

#include <QKeyEvent>

#include "model/Composition.h"
#include "store/ObjectContext.h"
#include "timeline/TYTimelineScrollView.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TYTimelineViewAccessible.h"
#include "timeline/TYTimelneClipView.h"
#include "timeline/TimeRulerPainter.h"
#include "timeline/TimelineReading.h"
#include "timeline/TimelineScene.h"

namespace timeline {

using Kind = TimelineItem::Kind;

store::ManagedObject* TimelineItemAccessible::managed() const {
  if (!m_view || !m_view->composition()) return nullptr;
  return m_view->composition()->context()->objectWithId(m_item.object);
}

TimelineRow TimelineItemAccessible::row() const {
  if (auto* component = dynamic_cast<model::QuartzComponent*>(managed()))
    return {component, nullptr};
  if (auto* attribute = dynamic_cast<model::Attribute*>(managed()))
    return {dynamic_cast<model::QuartzComponent*>(attribute->component()), attribute};
  return {};
}

model::StopFrame* TimelineItemAccessible::stopFrame() const {
  return dynamic_cast<model::StopFrame*>(managed());
}

KeyFrameReference TimelineItemAccessible::keyFrame() const {
  return {row().attribute, m_item.time};
}

bool TimelineItemAccessible::isValid() const {
  switch (m_item.kind) {
    case Kind::StopFrame:
      return stopFrame() != nullptr;
    case Kind::Row:
      return row().component != nullptr;
    case Kind::KeyFrame:
      return row().attribute && row().attribute->values().contains(m_item.time);
  }
  return false;
}

QAccessibleInterface* TimelineItemAccessible::parent() const {
  auto* view =
      static_cast<TYTimelineViewAccessible*>(QAccessible::queryAccessibleInterface(m_view.data()));
  if (m_item.kind != Kind::KeyFrame || !view) return view;
  return view->interfaceOf({Kind::Row, m_item.object, 0});
}

int TimelineItemAccessible::childCount() const {
  const TimelineRow shown = row();
  return m_item.kind == Kind::Row && shown.attribute
             ? int(KeyFrameSelection::timesOf(*shown.attribute).size())
             : 0;
}

QAccessibleInterface* TimelineItemAccessible::child(int index) const {
  if (index < 0 || index >= childCount()) return nullptr;
  const double time = KeyFrameSelection::timesOf(*row().attribute)[index];
  auto* view =
      static_cast<TYTimelineViewAccessible*>(QAccessible::queryAccessibleInterface(m_view.data()));
  return view->interfaceOf({Kind::KeyFrame, m_item.object, time});
}

int TimelineItemAccessible::indexOfChild(const QAccessibleInterface* child) const {
  const auto* known = dynamic_cast<const TimelineItemAccessible*>(child);
  if (!known || childCount() == 0) return -1;
  return int(KeyFrameSelection::timesOf(*row().attribute).indexOf(known->item().time));
}

QAccessibleInterface* TimelineItemAccessible::childAt(int x, int y) const {
  for (int i = 0; i < childCount(); ++i)
    if (QAccessibleInterface* one = child(i); one->rect().contains(x, y)) return one;
  return nullptr;
}

QAccessible::Role TimelineItemAccessible::role() const {
  return m_item.kind == Kind::Row ? QAccessible::TreeItem : QAccessible::ListItem;
}

QAccessible::State TimelineItemAccessible::state() const {
  QAccessible::State state;
  state.selectable = state.focusable = state.movable = true;
  state.invalid = !isValid();
  if (state.invalid) return state;
  const TimelineRow shown = row();
  if (m_item.kind == Kind::KeyFrame) {
    state.selected = KeyFrameSelection::contains(keyFrame());
  } else if (shown.isComponent()) {
    state.selected = shown.component->selected();
    state.expandable = true;
    state.expanded = shown.component->expanded();
    state.collapsed = !state.expanded;
    state.editable = true;
  }
  const auto* view = QAccessible::queryAccessibleInterface(m_view.data());
  state.focused = view && view->focusChild() == this;
  return state;
}

QString TimelineItemAccessible::text(QAccessible::Text text) const {
  if (!isValid()) return {};
  const auto& rate = m_view->timelineGeometry().content().rate;
  if (text == QAccessible::Name) {
    if (m_item.kind == Kind::StopFrame) return TimelineReading::stopFrame(*stopFrame(), rate);
    if (m_item.kind == Kind::KeyFrame) return TimelineReading::keyFrame(keyFrame(), rate);
    return row().attribute ? row().attribute->title() : row().component->title();
  }
  if (text == QAccessible::Description && m_item.kind == Kind::Row)
    return TimelineReading::row(row(), rate);
  if (text == QAccessible::Value && m_item.kind == Kind::KeyFrame)
    return row().attribute->valueForTimepoint(m_item.time).description();
  return {};
}

void TimelineItemAccessible::setText(QAccessible::Text kind, const QString& text) {
  if (kind != QAccessible::Name || !isValid()) return;
  if (m_item.kind == Kind::StopFrame) {
    const store::UndoStep step(*managed()->context(), TYTimelineView::tr("Change Trigger Text"));
    stopFrame()->setTriggerInformation(text);
  } else if (row().isComponent() && !text.trimmed().isEmpty()) {
    const store::UndoStep step(*managed()->context(), TYTimelineView::tr("Rename"));
    row().component->setTitle(text);
  }
}

QRect TimelineItemAccessible::rect() const {
  if (!isValid()) return {};
  const TYTimelineGeometry& geometry = m_view->timelineGeometry();
  const QWidget& clip = m_view->scrollView().clipView();
  const auto onScreen = [&](const QRectF& inClip) {
    const QRect rect = inClip.toAlignedRect();
    return QRect(clip.mapToGlobal(rect.topLeft()), rect.size());
  };
  if (m_item.kind == Kind::StopFrame)
    return onScreen(TimeRulerPainter::stopFrameRect(geometry, stopFrame()->timepoint())
                        .translated(0, -TYTimelineGeometry::rulerThickness));
  const TimelineRow shown = row();
  const int index = shown.attribute ? m_view->rows().rowOf(*shown.attribute)
                                    : m_view->rows().rowOf(*shown.component);
  if (index < 0) return {};
  const QPointF origin = geometry.visibleOrigin();
  if (m_item.kind == Kind::KeyFrame)
    return onScreen(geometry.keyFrameRect(m_item.time, index).translated(-origin));
  const double title = m_view->scene().componentsWidth;
  return onScreen(
      TYTimelineGeometry::rectForRow(index, title + clip.width()).translated(-title, -origin.y()));
}

void* TimelineItemAccessible::interface_cast(QAccessible::InterfaceType type) {
  return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                              : nullptr;
}

QStringList TimelineItemAccessible::actionNames() const {
  return {setFocusAction(), pressAction(), increaseAction(), decreaseAction()};
}

QStringList TimelineItemAccessible::keyBindingsForAction(const QString& name) const {
  if (name == pressAction()) return {QStringLiteral("Return")};
  if (name == increaseAction()) return {QStringLiteral("Ctrl+Right")};
  if (name == decreaseAction()) return {QStringLiteral("Ctrl+Left")};
  return {};
}

void TimelineItemAccessible::focus() {
  m_view->setFocus(Qt::OtherFocusReason);
  TimelineScene& scene = m_view->scene();
  if (m_item.kind == Kind::StopFrame) {
    m_view->setCurrentRow(-1);
    scene.currentTime = stopFrame()->timepoint();
  } else {
    const TimelineRow shown = row();
    const int index = shown.attribute ? m_view->rows().rowOf(*shown.attribute)
                                      : m_view->rows().rowOf(*shown.component);
    if (index < 0) return;
    m_view->setCurrentRow(index);
    m_view->composition()->deselectAllKeyFrames();
    if (m_item.kind == Kind::KeyFrame) {
      scene.currentTime = m_item.time;
      KeyFrameSelection::add(keyFrame());
    } else if (shown.isComponent()) {
      m_view->composition()->clearSelection();
      shown.component->setSelected(true);
    }
  }
  m_view->updateAll();
}

void TimelineItemAccessible::doAction(const QString& name) {
  if (!isValid()) return;
  focus();
  // As the same keys do it.
  const auto key = [this](Qt::Key pressed, Qt::KeyboardModifiers modifiers) {
    QKeyEvent event(QEvent::KeyPress, pressed, modifiers);
    m_view->press(event);
  };
  if (name == pressAction()) key(Qt::Key_Return, Qt::NoModifier);
  if (name == increaseAction()) key(Qt::Key_Right, Qt::ControlModifier);
  if (name == decreaseAction()) key(Qt::Key_Left, Qt::ControlModifier);
}

}  // namespace timeline
