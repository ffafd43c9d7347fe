#pragma once

#include "runtime/Value.h"

namespace runtime {

struct StructureMember {
  QString key;  ///< empty in keyless structures
  Value value;
  friend bool operator==(const StructureMember&, const StructureMember&) = default;
};

}  // namespace runtime
