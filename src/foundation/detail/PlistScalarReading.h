#pragma once

#include <string>
#include <string_view>

#include "foundation/PropertyValue.h"

namespace foundation::detail {

// These read text that the functions of PlistScalarSyntax.h have accepted.

[[nodiscard]] PropertyValue readPlistInteger(std::string_view text);
/// The nearest number; beyond the range infinity or zero. Independent of the locale in force.
[[nodiscard]] PropertyValue readPlistReal(std::string_view text);
[[nodiscard]] PropertyValue readPlistDate(std::string_view text);
/// Text with entities replaced, appended in UTF-8.
void appendWithoutEntities(std::string_view text, std::string& out);

/// Seconds since 2001 as binary files hold them, to the millisecond.
[[nodiscard]] PropertyValue dateFromReference(double seconds);

}  // namespace foundation::detail
