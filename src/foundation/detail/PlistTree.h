#pragma once

#include <QByteArrayView>
#include <optional>

#include "foundation/PropertyValue.h"

namespace foundation::detail {

/// Parses bytes that passed the check of their form; nothing when the parser refuses them anyway.
/// Independent of the locale in force.
[[nodiscard]] std::optional<PropertyValue> parseCheckedPlist(QByteArrayView bytes, bool binary);

}  // namespace foundation::detail
