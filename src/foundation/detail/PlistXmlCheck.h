#pragma once

#include <QByteArrayView>
#include <optional>

#include "foundation/detail/PlistProblem.h"

namespace foundation::detail {

/// Checks everything about UTF-8 XML text that buildCheckedXml() relies on: structure, depth,
/// number and date syntax, entities, text encoding. One pass, no allocation that grows with the
/// text.
[[nodiscard]] std::optional<PlistProblem> checkPlistXml(QByteArrayView text);

}  // namespace foundation::detail
