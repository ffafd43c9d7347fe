#include "canvas/CanvasObserver.h"

#include "model/Composition.h"

namespace canvas {

using model::QuartzComponent;

CanvasObserver::CanvasObserver(model::Composition& composition, Callbacks callbacks)
    : m_composition(composition), m_callbacks(std::move(callbacks)) {
  observe(u"zoomMode", &Callbacks::zoomChanged);
  observe(u"size", &Callbacks::zoomChanged);
  observe(u"editorTimepoint", &Callbacks::timeChanged);
  observe(u"playMode", &Callbacks::playModeChanged);
  observe(u"selectedComponents", &Callbacks::selectionChanged);
  observe(u"componentsSortedByZLevel", &Callbacks::componentsChanged);
  observe(u"showsSafeZones", &Callbacks::overlaysChanged);
  observe(u"showsRulers", &Callbacks::overlaysChanged);
  m_observations.push_back(
      composition.observe(QStringLiteral("components"), [this](const store::Change&) {
        followComponents();
        m_callbacks.componentsChanged();
      }));
  m_observations.push_back(
      composition.observe(QStringLiteral("rulers"), [this](const store::Change&) {
        followGuides();
        m_callbacks.overlaysChanged();
      }));
  m_observations.push_back(composition.context()->observeChanges(
      [this](const store::ChangeSet& changes) { contextChanged(changes); }));
  followComponents();
  followGuides();
}

void CanvasObserver::observe(const char16_t* key,
                             std::function<void()> CanvasObserver::Callbacks::*callback) {
  m_observations.push_back(
      m_composition.observe(QString::fromUtf16(key),
                            [this, callback](const store::Change&) { (m_callbacks.*callback)(); }));
}

void CanvasObserver::followComponents() {
  QHash<const QuartzComponent*, store::Subscription> followed;
  for (QuartzComponent* component : m_composition.components()) {
    const auto known = m_components.find(component);
    if (known != m_components.end()) {
      followed.insert(component, *known);
      continue;
    }
    followed.insert(component, component->observe(QStringLiteral("needsUpdate"),
                                                  [this, component](const store::Change&) {
                                                    if (component->needsUpdate())
                                                      m_callbacks.componentChanged(*component);
                                                  }));
  }
  m_components = followed;
}

void CanvasObserver::followGuides() {
  m_guides.clear();
  for (model::Ruler* guide : m_composition.rulers())
    for (const char16_t* key : {u"position", u"horizontal"})
      m_guides.push_back(guide->observe(QString::fromUtf16(key), [this](const store::Change&) {
        m_callbacks.overlaysChanged();
      }));
}

void CanvasObserver::contextChanged(const store::ChangeSet& changes) {
  // Times of components, for instance, make nobody update.
  for (store::ManagedObject* object : changes.updated.objects())
    if (auto* component = dynamic_cast<QuartzComponent*>(object))
      m_callbacks.componentChanged(*component);
}

}  // namespace canvas
