#include "timeline/TimelineObserver.h"

#include "model/Composition.h"

namespace timeline {

using model::Attribute;
using model::QuartzComponent;
using store::Change;

TimelineObserver::TimelineObserver(model::Composition& composition, Callbacks callbacks)
    : m_composition(composition), m_callbacks(std::move(callbacks)) {
  observe(u"stopFrames", &Callbacks::stopFramesChanged);
  observe(u"editorTimepoint", &Callbacks::timeChanged);
  observe(u"duration", &Callbacks::durationChanged);
  observe(u"broadcastMode", &Callbacks::durationChanged);
  observe(u"playMode", &Callbacks::playModeChanged);
  observe(u"selectedComponents", &Callbacks::selectionChanged);
  m_observations.push_back(
      composition.observe(QStringLiteral("componentsSortedByInverseZLevel"), [this](const Change&) {
        followComponents();
        m_callbacks.rowsChanged();
      }));
  m_observations.push_back(composition.observe(QStringLiteral("components"), [this](const Change&) {
    followComponents();
    m_callbacks.rowsChanged();
  }));
  m_observations.push_back(composition.context()->observeChanges(
      [this](const store::ChangeSet& changes) { contextChanged(changes); }));
  followComponents();
}

void TimelineObserver::observe(const char16_t* key, std::function<void()> Callbacks::*callback) {
  m_observations.push_back(m_composition.observe(
      QString::fromUtf16(key), [this, callback](const Change&) { (m_callbacks.*callback)(); }));
}

void TimelineObserver::followComponents() {
  const QList<QuartzComponent*> components = m_composition.componentArray();
  const QSet<const QuartzComponent*> present(components.cbegin(), components.cend());
  m_components.removeIf([&](const auto& entry) { return !present.contains(entry.key()); });
  for (QuartzComponent* component : components)
    if (!m_components.contains(component)) followComponent(*component);
}

void TimelineObserver::followComponent(QuartzComponent& component) {
  Subscriptions& subscriptions = m_components[&component];
  for (const char16_t* key :
       {u"title", u"startTime", u"endTime", u"selected", u"visibleInCompositionEditor"})
    subscriptions.push_back(component.observe(
        QString::fromUtf16(key),
        [this, &component](const Change&) { m_callbacks.componentChanged(component); }));
  subscriptions.push_back(component.observe(QStringLiteral("expanded"),
                                            [this](const Change&) { m_callbacks.rowsChanged(); }));
}

void TimelineObserver::followAttributes(const QList<Attribute*>& attributes) {
  const QSet<const Attribute*> wanted(attributes.cbegin(), attributes.cend());
  m_attributes.removeIf([&](const auto& entry) { return !wanted.contains(entry.key()); });
  for (Attribute* attribute : attributes) {
    if (m_attributes.contains(attribute)) continue;
    Subscriptions& subscriptions = m_attributes[attribute];
    for (const char16_t* key : {u"values", u"animateable", u"selectedTimepoints"})
      subscriptions.push_back(attribute->observe(
          QString::fromUtf16(key),
          [this, attribute](const Change&) { m_callbacks.attributeChanged(*attribute); }));
  }
}

void TimelineObserver::contextChanged(const store::ChangeSet& changes) {
  bool rows = false;
  bool stops = false;
  for (const store::ObjectSet* set : {&changes.inserted, &changes.deleted})
    for (const store::ManagedObject* object : set->objects())
      rows = rows || dynamic_cast<const Attribute*>(object);
  for (const store::ManagedObject* object : changes.updated.objects())
    stops = stops || dynamic_cast<const model::StopFrame*>(object);
  if (rows) m_callbacks.rowsChanged();
  if (stops) m_callbacks.stopFramesChanged();
}

}  // namespace timeline
