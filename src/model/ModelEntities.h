#pragma once

#include "store/EntityFactories.h"

namespace model {

/// The kinds of objects that a document holds, for loading them from a store.
[[nodiscard]] const store::EntityFactories& modelEntities();

}  // namespace model
