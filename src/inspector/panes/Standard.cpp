#include "inspector/panes/Standard.h"

#include "model/QuartzComponent.h"

namespace inspector {

QList<model::Attribute*> attributesForKeys(const QList<model::QuartzComponent*>& components,
                                           const QStringList& keys) {
  QList<model::Attribute*> found;
  for (const model::QuartzComponent* component : components)
    for (const QString& key : keys)
      if (model::Attribute* attribute = component->attributeForKey(key)) found.append(attribute);
  return found;
}

}  // namespace inspector
