#pragma once

#include "foundation/PropertyValue.h"
#include "foundation/detail/PlistBinaryLayout.h"

namespace foundation::detail {

/// The value of a binary property list that checkPlistBinary() accepted; anything else is undefined
/// behaviour. What the file shares, the value shares: time and memory stay proportional to the
/// bytes.
[[nodiscard]] PropertyValue buildCheckedBinary(const PlistBinaryLayout& layout);

}  // namespace foundation::detail
