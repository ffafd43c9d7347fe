#pragma once

#include "foundation/PropertyValue.h"

namespace store {

class ObjectContext;

/// Everything persistent in the context as one tree: an array of objects in the order of their
/// numbers, each with "id", "entity", "values" and "relations" (numbers of other objects). Two
/// contexts with the same contents give equal trees.
[[nodiscard]] foundation::PropertyValue storeSnapshot(const ObjectContext& context);

}  // namespace store
