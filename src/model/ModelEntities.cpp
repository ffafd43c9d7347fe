#include "model/ModelEntities.h"

#include "model/Composition.h"

namespace model {

const store::EntityFactories& modelEntities() {
  static const store::EntityFactories factories{
      {Composition::declaration().name(),
       [] { return std::make_unique<Composition>(VideoResolution(QString())); }},
      {QuartzComponent::declaration().name(), [] { return std::make_unique<QuartzComponent>(); }},
      {Attribute::declaration().name(),
       [] { return std::make_unique<Attribute>(foundation::PropertyDictionary()); }},
      {StopFrame::declaration().name(), [] { return std::make_unique<StopFrame>(); }},
      {Ruler::declaration().name(), [] { return std::make_unique<Ruler>(); }}};
  return factories;
}

}  // namespace model
