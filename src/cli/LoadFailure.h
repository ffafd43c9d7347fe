#pragma once

#include "cli/ExitStatus.h"
#include "foundation/Result.h"

namespace cli {

/// Why something could not be read or used, with the status to end with.
struct LoadFailure {
  ExitStatus status = ExitStatus::InputUnreadable;
  foundation::Error error;
};

}  // namespace cli
