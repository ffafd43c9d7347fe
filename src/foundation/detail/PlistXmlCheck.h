#pragma once

#include <QByteArrayView>
#include <optional>

#include "foundation/detail/PlistProblem.h"

namespace foundation::detail {

/// Checks UTF-8 XML text for everything that the property-list parser behind it would get wrong
/// without a word or would not survive: structure, depth, number and date syntax, entities, text
/// encoding. One pass, no allocation that grows with the text.
[[nodiscard]] std::optional<PlistProblem> checkPlistXml(QByteArrayView text);

}  // namespace foundation::detail
