#pragma once

#include "cli/ExitStatus.h"
#include "foundation/Result.h"

namespace cli {

/// Why something could not be read, used or done, with the status to end with.
struct LoadFailure {
  ExitStatus status = ExitStatus::InputUnreadable;
  foundation::Error error;
};

[[nodiscard]] inline tl::unexpected<LoadFailure> failed(ExitStatus status, const QString& message,
                                                        const QString& file = {},
                                                        const QString& detail = {}) {
  return tl::unexpected(LoadFailure{status, {message, file, detail}});
}

/// The call is wrong.
[[nodiscard]] inline tl::unexpected<LoadFailure> misused(const QString& message) {
  return failed(ExitStatus::Usage, message);
}

}  // namespace cli
