#pragma once

#include "foundation/Finding.h"
#include "foundation/Result.h"

namespace cli {

/// Checks one file the way its kind asks for; fails when it cannot be read at all. A further kind
/// of file is a further case here.
[[nodiscard]] foundation::Result<foundation::Findings> checkFile(const QString& path);

}  // namespace cli
