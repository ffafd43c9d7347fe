#pragma once

#include <QHash>
#include <functional>
#include <vector>

#include "store/ObjectContext.h"

namespace model {
class Attribute;
class Composition;
class QuartzComponent;
}  // namespace model

namespace timeline {

/// Tells the timeline what changed in the composition that it shows. Components are observed one by
/// one, attributes only while their rows are seen. Ends with its life.
class TimelineObserver {
 public:
  struct Callbacks {
    std::function<void()> rowsChanged;  ///< others, another order, opened or closed
    std::function<void(const model::QuartzComponent&)> componentChanged;
    std::function<void(const model::Attribute&)> attributeChanged;
    std::function<void()> selectionChanged;
    std::function<void()> stopFramesChanged;
    std::function<void()> timeChanged;
    std::function<void()> durationChanged;
    std::function<void()> playModeChanged;
  };

  TimelineObserver(model::Composition& composition, Callbacks callbacks);

  /// Exactly these attributes are observed from now on.
  void followAttributes(const QList<model::Attribute*>& attributes);
  [[nodiscard]] qsizetype followedAttributes() const { return m_attributes.size(); }

 private:
  void observe(const char16_t* key, std::function<void()> Callbacks::*callback);
  void followComponents();
  void followComponent(model::QuartzComponent& component);
  void contextChanged(const store::ChangeSet& changes);

  model::Composition& m_composition;
  Callbacks m_callbacks;
  using Subscriptions = std::vector<store::Subscription>;
  Subscriptions m_observations;
  QHash<const model::QuartzComponent*, Subscriptions> m_components;
  QHash<const model::Attribute*, Subscriptions> m_attributes;
};

}  // namespace timeline
