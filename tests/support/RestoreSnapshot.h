#pragma once

#include <QSet>

#include "foundation/Result.h"
#include "store/EntityFactories.h"
#include "store/ObjectContext.h"

namespace support {

/// Puts the objects of a tree that store::storeSnapshot() made into the context. Values that the
/// tree lacks keep their defaults. Fails, and changes nothing, for an unknown entity, a missing
/// number and one that is there twice.
inline foundation::Result<void> restoreSnapshot(const foundation::PropertyValue& snapshot,
                                                const store::EntityFactories& factories,
                                                store::ObjectContext& context) {
  std::vector<store::FetchedObject> fetched;
  QSet<store::ObjectId> numbers;
  for (const foundation::PropertyValue& entry : snapshot.array()) {
    const foundation::PropertyDictionary& stored = entry.dictionary();
    const QString entity = stored.value(u"entity").toString();
    const auto id = static_cast<store::ObjectId>(stored.value(u"id").toInteger());
    if (!factories.contains(entity))
      return foundation::failure(
          QStringLiteral("there are no objects of the kind \"%1\"").arg(entity));
    if (id == 0 || numbers.contains(id) || context.objectWithId(id))
      return foundation::failure(QStringLiteral("an object has no number of its own (%1)").arg(id));
    numbers.insert(id);
    store::FetchedObject object{id, factories.value(entity)()};
    for (const auto& [key, value] : stored.value(u"values").dictionary())
      object.object->setStoredValue(value, key);
    for (const auto& [key, value] : stored.value(u"relations").dictionary())
      object.relations.append({key, static_cast<store::ObjectId>(value.toInteger())});
    fetched.push_back(std::move(object));
  }
  context.takeFetched(std::move(fetched));
  return {};
}

}  // namespace support
