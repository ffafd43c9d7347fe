#include "store/StoreSnapshot.h"

#include "store/ObjectContext.h"

namespace store {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

PropertyDictionary snapshotOf(const ManagedObject& object) {
  PropertyDictionary values;
  for (const PropertyDescription& property : object.entity().properties())
    if (property.codec) values.insert(property.key, object.storedValue(property.key));
  PropertyDictionary relations;
  for (const ToOneDescription& relation : object.entity().toOnes())
    if (const auto* other = object.valueForKey(relation.key).value<ManagedObject*>())
      relations.insert(relation.key, other->objectId());
  return {{QStringLiteral("id"), object.objectId()},
          {QStringLiteral("entity"), object.entity().name()},
          {QStringLiteral("values"), std::move(values)},
          {QStringLiteral("relations"), std::move(relations)}};
}

}  // namespace

PropertyValue storeSnapshot(const ObjectContext& context) {
  PropertyArray objects;
  for (const auto& [id, object] : context.objects()) objects.append(snapshotOf(*object));
  return objects;
}

}  // namespace store
