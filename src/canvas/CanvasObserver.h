#pragma once

#include <QHash>
#include <functional>
#include <vector>

#include "store/ObjectContext.h"

namespace model {
class Composition;
class QuartzComponent;
}  // namespace model

namespace canvas {

/// Tells the canvas what changed in the composition that it shows. Ends with its life.
class CanvasObserver {
 public:
  struct Callbacks {
    std::function<void(const model::QuartzComponent&)> componentChanged;
    std::function<void()> componentsChanged;  ///< others, or in another order
    std::function<void()> zoomChanged;        ///< or the size of the picture
    std::function<void()> timeChanged;
    std::function<void()> playModeChanged;
    std::function<void()> selectionChanged;
    std::function<void()> overlaysChanged;  ///< guides and safe areas
  };

  CanvasObserver(model::Composition& composition, Callbacks callbacks);

 private:
  void observe(const char16_t* key, std::function<void()> CanvasObserver::Callbacks::*callback);
  void followComponents();
  void followGuides();
  void contextChanged(const store::ChangeSet& changes);

  model::Composition& m_composition;
  Callbacks m_callbacks;
  std::vector<store::Subscription> m_observations;
  QHash<const model::QuartzComponent*, store::Subscription> m_components;
  std::vector<store::Subscription> m_guides;
};

}  // namespace canvas
