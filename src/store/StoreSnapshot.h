#pragma once

#include <QMap>
#include <functional>
#include <memory>

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"

namespace store {

class ManagedObject;
class ObjectContext;

/// Makes empty objects by the names of their entities.
using EntityFactories = QMap<QString, std::function<std::unique_ptr<ManagedObject>()>>;

/// Everything persistent in the context as one tree: an array of objects in the order of their
/// numbers, each with "id", "entity", "values" and "relations" (numbers of other objects). Two
/// contexts with the same contents give equal trees.
[[nodiscard]] foundation::PropertyValue storeSnapshot(const ObjectContext& context);

/// Puts the objects of such a tree into the context. Values that the tree lacks keep their
/// defaults, keys that the entities do not have are left out. Fails, and changes nothing, for an
/// unknown entity, a missing number and one that is there twice.
[[nodiscard]] foundation::Result<void> restoreSnapshot(const foundation::PropertyValue& snapshot,
                                                       const EntityFactories& factories,
                                                       ObjectContext& context);

}  // namespace store
