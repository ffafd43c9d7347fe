#pragma once

#include "runtime/draw/DrawList.h"

namespace runtime {

/// Whether painting the items one over the other gives what a depth buffer would: no item that
/// tests depth lies, where they meet on the screen, behind one that was drawn before it. Also false
/// where an item cannot be painted flat at all (meshes, lit surfaces).
[[nodiscard]] bool paintersOrderSuffices(const DrawList& list);

}  // namespace runtime
