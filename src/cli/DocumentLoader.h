#pragma once

#include "cli/ExitStatus.h"
#include "model/Composition.h"

namespace cli {

/// Why a file could not be opened, with the status to end with.
struct LoadFailure {
  ExitStatus status = ExitStatus::InputUnreadable;
  foundation::Error error;
};

/// A graphic opened from its source.
struct DocumentLoader {
  std::unique_ptr<model::Composition> composition;
  QStringList warnings;

  [[nodiscard]] static tl::expected<DocumentLoader, LoadFailure> load(const QString& path);
};

}  // namespace cli
