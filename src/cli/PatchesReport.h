#pragma once

#include <QString>

namespace cli {

/// docs/patches.md: every patch class of the runtime with its ports and its status, from the
/// registrations.
[[nodiscard]] QString patchesReport();

}  // namespace cli
