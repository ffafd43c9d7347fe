#include "canvas/CompositionViewAccessible.h"

#include "canvas/ComponentWalk.h"
#include "canvas/CompositionView.h"
#include "model/Composition.h"

namespace canvas {

using model::QuartzComponent;

namespace {

/// One component on the canvas. It is looked up by its number, since components come and go.
class ComponentAccessible : public QAccessibleInterface {
 public:
  ComponentAccessible(CompositionView* view, store::ObjectId id) : m_view(view), m_id(id) {}

  [[nodiscard]] store::ObjectId id() const { return m_id; }
  [[nodiscard]] bool isValid() const override { return component() != nullptr; }
  [[nodiscard]] QObject* object() const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(m_view);
  }
  [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Graphic; }
  void setText(QAccessible::Text, const QString&) override {}

  [[nodiscard]] QString text(QAccessible::Text text) const override {
    const QuartzComponent* found = component();
    if (!found) return {};
    if (text == QAccessible::Name) return found->title();
    if (text != QAccessible::Description) return {};
    const QRectF frame = found->drawingFrame();
    const QString place = CompositionView::tr("At %1, %2, %3 by %4 pixels")
                              .arg(frame.left())
                              .arg(frame.top())
                              .arg(frame.width())
                              .arg(frame.height());
    const QString problem = m_view->scene()->problemOf(*found);
    return problem.isEmpty() ? place : problem + QStringLiteral(". ") + place;
  }

  [[nodiscard]] QRect rect() const override {
    const QuartzComponent* found = component();
    if (!found) return {};
    const QRect inView =
        m_view->geometryOfPicture().viewRect(found->drawingFrame()).toAlignedRect();
    return {m_view->mapToGlobal(inView.topLeft()), inView.size()};
  }

  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state;
    const QuartzComponent* found = component();
    state.selectable = state.focusable = state.movable = true;
    state.selected = found && found->selected();
    state.focused = state.selected && m_view->hasFocus();
    state.invalid = !found;
    return state;
  }

 private:
  [[nodiscard]] const QuartzComponent* component() const {
    if (!m_view || !m_view->composition()) return nullptr;
    return dynamic_cast<QuartzComponent*>(m_view->composition()->context()->objectWithId(m_id));
  }

  QPointer<CompositionView> m_view;
  store::ObjectId m_id;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  auto* view = qobject_cast<CompositionView*>(object);
  return view ? new CompositionViewAccessible(view) : nullptr;
}

}  // namespace

void CompositionViewAccessible::install() {
  static const bool installed = (QAccessible::installFactory(makeInterface), true);
  Q_UNUSED(installed)
}

CompositionViewAccessible::CompositionViewAccessible(CompositionView* view)
    : QAccessibleWidget(view, QAccessible::LayeredPane) {}

CompositionViewAccessible::~CompositionViewAccessible() {
  for (const QAccessible::Id id : std::as_const(m_children))
    QAccessible::deleteAccessibleInterface(id);
}

CompositionView* CompositionViewAccessible::view() const {
  return qobject_cast<CompositionView*>(object());
}

QList<QuartzComponent*> CompositionViewAccessible::components() const {
  const CompositionView* shown = view();
  if (!shown || !shown->composition()) return {};
  return componentsToWalk(*shown->composition());
}

QAccessibleInterface* CompositionViewAccessible::interfaceOf(
    const QuartzComponent& component) const {
  const auto known = m_children.constFind(component.objectId());
  if (known != m_children.constEnd()) return QAccessible::accessibleInterface(*known);
  auto* made = new ComponentAccessible(view(), component.objectId());
  m_children.insert(component.objectId(), QAccessible::registerAccessibleInterface(made));
  return made;
}

int CompositionViewAccessible::childCount() const {
  return static_cast<int>(components().size());
}

QAccessibleInterface* CompositionViewAccessible::child(int index) const {
  const QList<QuartzComponent*> list = components();
  return index >= 0 && index < list.size() ? interfaceOf(*list[index]) : nullptr;
}

int CompositionViewAccessible::indexOfChild(const QAccessibleInterface* child) const {
  const auto* known = dynamic_cast<const ComponentAccessible*>(child);
  const QList<QuartzComponent*> list = components();
  for (qsizetype i = 0; known && i < list.size(); ++i)
    if (list[i]->objectId() == known->id()) return static_cast<int>(i);
  return -1;
}

QAccessibleInterface* CompositionViewAccessible::childAt(int x, int y) const {
  for (const QuartzComponent* component : components()) {
    QAccessibleInterface* known = interfaceOf(*component);
    if (known->rect().contains(x, y)) return known;
  }
  return nullptr;
}

QAccessibleInterface* CompositionViewAccessible::focusChild() const {
  const CompositionView* shown = view();
  if (!shown || !shown->hasFocus() || !shown->composition()) return nullptr;
  const QuartzComponent* selected = shown->composition()->firstSelected();
  return selected ? interfaceOf(*selected) : nullptr;
}

QString CompositionViewAccessible::text(QAccessible::Text text) const {
  const CompositionView* shown = view();
  if (text == QAccessible::Description && shown && shown->composition())
    return CompositionView::tr("%n components", nullptr, childCount());
  return QAccessibleWidget::text(text);
}

}  // namespace canvas
