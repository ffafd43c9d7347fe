#include "timeline/TYTimelineViewAccessible.h"

#include "model/Composition.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TimelineItemAccessible.h"
#include "timeline/TimelineScene.h"

namespace timeline {

using Kind = TimelineItem::Kind;

namespace {

/// Key frames that move are others from then on; those of before are looked through at this number.
constexpr qsizetype mostChildren = 2000;

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  auto* view = qobject_cast<TYTimelineView*>(object);
  return view ? new TYTimelineViewAccessible(view) : nullptr;
}

TimelineItem itemOf(const TimelineRow& row) {
  return {Kind::Row, row.attribute ? row.attribute->objectId() : row.component->objectId(), 0};
}

}  // namespace

void TYTimelineViewAccessible::install() {
  static const bool installed = (QAccessible::installFactory(makeInterface), true);
  Q_UNUSED(installed)
}

TYTimelineViewAccessible::TYTimelineViewAccessible(TYTimelineView* view)
    : QAccessibleWidget(view, QAccessible::Tree) {}

TYTimelineViewAccessible::~TYTimelineViewAccessible() {
  for (const QAccessible::Id id : std::as_const(m_children))
    QAccessible::deleteAccessibleInterface(id);
}

TYTimelineView* TYTimelineViewAccessible::view() const {
  return qobject_cast<TYTimelineView*>(object());
}

QAccessibleInterface* TYTimelineViewAccessible::interfaceOf(const TimelineItem& item) const {
  const auto known = m_children.constFind(item);
  if (known != m_children.constEnd()) return QAccessible::accessibleInterface(*known);
  if (m_children.size() >= mostChildren) forgetGone();
  auto* made = new TimelineItemAccessible(view(), item);
  m_children.insert(item, QAccessible::registerAccessibleInterface(made));
  return made;
}

void TYTimelineViewAccessible::forgetGone() const {
  m_children.removeIf([](const auto& entry) {
    const QAccessibleInterface* one = QAccessible::accessibleInterface(entry.value());
    if (one && one->isValid()) return false;
    QAccessible::deleteAccessibleInterface(entry.value());
    return true;
  });
}

int TYTimelineViewAccessible::stopFrameCount() const {
  const TYTimelineView* shown = view();
  return shown && shown->composition() ? int(shown->composition()->stopFrames().size()) : 0;
}

int TYTimelineViewAccessible::childCount() const {
  return stopFrameCount() + (view() ? view()->rows().count() : 0);
}

QAccessibleInterface* TYTimelineViewAccessible::child(int index) const {
  const int stops = stopFrameCount();
  if (index < 0 || index >= childCount()) return nullptr;
  if (index < stops)
    return interfaceOf(
        {Kind::StopFrame, view()->composition()->stopFramesSortedByTime()[index]->objectId(), 0});
  return interfaceOf(itemOf(view()->rows().at(index - stops)));
}

int TYTimelineViewAccessible::indexOfChild(const QAccessibleInterface* child) const {
  const auto* known = dynamic_cast<const TimelineItemAccessible*>(child);
  if (!known) return -1;
  for (int i = 0; i < childCount(); ++i)
    if (this->child(i) == known) return i;
  return -1;
}

QAccessibleInterface* TYTimelineViewAccessible::childAt(int x, int y) const {
  const int stops = stopFrameCount();
  for (int i = 0; i < stops; ++i)
    if (child(i)->rect().contains(x, y)) return child(i);
  const TYTimelineView* shown = view();
  if (!shown) return nullptr;
  const double above = TYTimelineGeometry::rulerThickness;
  const QPoint inView = shown->mapFromGlobal(QPoint(x, y));
  const int row =
      static_cast<int>((inView.y() - above + shown->timelineGeometry().visibleOrigin().y()) /
                       TimelineMeasures::componentHeight);
  return inView.y() < above ? nullptr : child(stops + row);
}

QAccessibleInterface* TYTimelineViewAccessible::focusChild() const {
  TYTimelineView* shown = view();
  if (!shown || !shown->hasFocus() || !shown->composition()) return nullptr;
  const TimelineScene& scene = shown->scene();
  if (scene.currentRow < 0) {
    const model::StopFrame* stopFrame =
        scene.currentTime ? scene.composition->stopFrameAtTimepoint(*scene.currentTime) : nullptr;
    return stopFrame ? interfaceOf({Kind::StopFrame, stopFrame->objectId(), 0}) : nullptr;
  }
  const TimelineRow row = shown->rows().at(scene.currentRow);
  if (!row.component) return nullptr;
  if (row.attribute && scene.currentTime)
    return interfaceOf({Kind::KeyFrame, row.attribute->objectId(), *scene.currentTime});
  return interfaceOf(itemOf(row));
}

QString TYTimelineViewAccessible::text(QAccessible::Text text) const {
  if (text == QAccessible::Name) return TYTimelineView::tr("Timeline");
  if (text == QAccessible::Description && view())
    return TYTimelineView::tr("%n rows", nullptr, view()->rows().count());
  return QAccessibleWidget::text(text);
}

}  // namespace timeline
