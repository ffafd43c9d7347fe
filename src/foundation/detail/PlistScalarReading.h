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
[[nodiscard]] QByteArray readBase64(std::string_view text);
/// Text with entities replaced, appended in UTF-8.
void appendWithoutEntities(std::string_view text, std::string& out);

/// Valid UTF-8 as text; unlike QString::fromUtf8() it keeps a byte-order mark at the start.
[[nodiscard]] QString textFromUtf8(std::string_view bytes);

/// Seconds since 2001 as binary files hold them, to the millisecond.
[[nodiscard]] PropertyValue dateFromReference(double seconds);

}  // namespace foundation::detail
