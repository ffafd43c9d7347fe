#pragma once

#include <QByteArrayView>
#include <optional>

#include "foundation/PropertyValue.h"

namespace support {

/// What libplist reads from the bytes; nothing when it refuses them, they are UTF-16, or their
/// prolog is one that the library takes wrongly. Only for bytes that PropertyList accepts: the
/// library is not safe with hostile ones.
[[nodiscard]] std::optional<foundation::PropertyValue> readWithLibrary(QByteArrayView bytes);

/// Equality but for what the library loses of dates: it cuts them to microseconds, those before
/// 1933 and after 2068 to seconds, and in the second before 2001 it drops the sign.
[[nodiscard]] bool sameButForDates(const foundation::PropertyValue& ours,
                                   const foundation::PropertyValue& library);

}  // namespace support
