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

foundation::Result<void> restoreSnapshot(const PropertyValue& snapshot,
                                         const EntityFactories& factories, ObjectContext& context) {
  std::vector<FetchedObject> fetched;
  QSet<ObjectId> numbers;
  for (const PropertyValue& entry : snapshot.array()) {
    const PropertyDictionary& stored = entry.dictionary();
    const QString entity = stored.value(u"entity").toString();
    const auto id = static_cast<ObjectId>(stored.value(u"id").toInteger());
    if (!factories.contains(entity))
      return foundation::failure(
          QStringLiteral("there are no objects of the kind \"%1\"").arg(entity));
    if (id == 0 || numbers.contains(id) || context.objectWithId(id))
      return foundation::failure(QStringLiteral("an object has no number of its own (%1)").arg(id));
    numbers.insert(id);
    FetchedObject object{id, factories.value(entity)()};
    for (const auto& [key, value] : stored.value(u"values").dictionary())
      object.object->setStoredValue(value, key);
    for (const auto& [key, value] : stored.value(u"relations").dictionary())
      object.relations.append({key, static_cast<ObjectId>(value.toInteger())});
    fetched.push_back(std::move(object));
  }
  context.takeFetched(std::move(fetched));
  return {};
}

}  // namespace store
