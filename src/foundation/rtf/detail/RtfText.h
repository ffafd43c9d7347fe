#pragma once

#include <QString>

namespace foundation::detail {

/// The text without what a styled text cannot hold: control characters except tabs, noncharacters
/// and placeholders of objects are left out, halves of surrogate pairs become U+FFFD.
[[nodiscard]] QString plainRtfText(QStringView text);

}  // namespace foundation::detail
