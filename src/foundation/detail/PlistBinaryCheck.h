#pragma once

#include <QByteArrayView>
#include <optional>

#include "foundation/detail/PlistBinaryLayout.h"
#include "foundation/detail/PlistProblem.h"

namespace foundation::detail {

/// Checks the trailer, the offset table and every object that the root reaches: markers, lengths,
/// references, cycles, depth, and how large the tree becomes once shared objects are written out.
/// Time and memory are proportional to the bytes. Fills the layout, which refers to the bytes.
[[nodiscard]] std::optional<PlistProblem> checkPlistBinary(QByteArrayView bytes,
                                                           PlistBinaryLayout& layout);

}  // namespace foundation::detail
