#include "inspector/InspectorContext.h"

#include "model/Composition.h"

namespace inspector {

InspectorContext::InspectorContext(QObject* parent) : QObject(parent) {}

InspectorContext::~InspectorContext() {
  end(true);
}

void InspectorContext::setComposition(model::Composition* composition) {
  end(true);
  m_subscriptions.clear();
  m_components.clear();
  m_attributes.reset();
  m_composition = composition;
  Q_EMIT objectsLeft();
  if (composition) {
    m_subscriptions.push_back(
        composition->observe(QStringLiteral("selectedComponents"), [this](const store::Change&) {
          m_selectionIsDue = true;
          schedule();
        }));
    m_subscriptions.push_back(watch(*composition, QStringLiteral("editorTimepoint")));
    m_subscriptions.push_back(composition->context()->observeChanges(
        [this](const store::ChangeSet& changes) { objectsChanged(changes); }));
  }
  setNeedsRebuild();
  updateNow();
}

void InspectorContext::objectsChanged(const store::ChangeSet& changes) {
  const auto concerns = [](const store::ObjectSet& set) {
    for (const store::ManagedObject* object : set.objects())
      if (dynamic_cast<const model::Attribute*>(object) ||
          dynamic_cast<const model::QuartzComponent*>(object))
        return true;
    return false;
  };
  if (concerns(changes.deleted)) {
    end(true);
    m_attributes.reset();
    Q_EMIT objectsLeft();
    setNeedsRebuild();
  } else if (concerns(changes.inserted)) {
    setNeedsRebuild();
  }
  setNeedsRefresh();
}

const AttributesByKey& InspectorContext::attributesByKey() {
  if (m_attributes) return *m_attributes;
  AttributesByKey& byKey = m_attributes.emplace();
  for (const model::QuartzComponent* component : std::as_const(m_components))
    for (model::Attribute* attribute : component->attributes()) {
      QList<model::Attribute*>& alike = byKey[attribute->key()];
      // By key a component has one attribute, the first.
      if (alike.isEmpty() || alike.last()->component() != component) alike.append(attribute);
    }
  return byKey;
}

QList<model::Attribute*> InspectorContext::attributesForKeys(const QStringList& keys) {
  const AttributesByKey& byKey = attributesByKey();
  QList<QList<model::Attribute*>> lists;
  qsizetype longest = 0;
  for (const QString& key : keys) {
    lists.append(byKey.value(key));
    longest = std::max(longest, lists.last().size());
  }
  QList<model::Attribute*> found;
  for (qsizetype i = 0; i < longest; ++i)
    for (const QList<model::Attribute*>& list : std::as_const(lists))
      if (i < list.size()) found.append(list[i]);
  return found;
}

void InspectorContext::begin(const QString& stepName) {
  end(true);
  if (m_composition)
    m_step = std::make_unique<store::UndoStep>(*m_composition->context(), stepName);
}

void InspectorContext::end(bool keep) {
  // Ending the step announces what it did, and whoever hears that may look at this object.
  const std::unique_ptr<store::UndoStep> step = std::move(m_step);
  if (step && !keep) step->cancel();
}

void InspectorContext::change(const QString& stepName, const std::function<void()>& change) {
  begin(stepName);
  if (m_composition) change();
  commit();
}

void InspectorContext::setNeedsRebuild() {
  m_rebuildIsDue = true;
  schedule();
}

void InspectorContext::setNeedsRefresh() {
  schedule();
}

void InspectorContext::schedule() {
  if (std::exchange(m_isScheduled, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (m_isScheduled) updateNow();
      },
      Qt::QueuedConnection);
}

void InspectorContext::updateNow() {
  m_isScheduled = false;
  const bool looks = std::exchange(m_selectionIsDue, false) || m_rebuildIsDue;
  const QList<model::QuartzComponent*> selected =
      m_composition && looks ? m_composition->selectedComponents() : m_components;
  if (std::exchange(m_rebuildIsDue, false) || selected != m_components) {
    end(true);
    m_components = selected;
    m_attributes.reset();
    Q_EMIT selectionChanged();
  }
  Q_EMIT valuesChanged();
}

store::Subscription InspectorContext::watch(store::ManagedObject& object, const QString& key) {
  return object.observe(key, [this](const store::Change&) { setNeedsRefresh(); });
}

}  // namespace inspector
