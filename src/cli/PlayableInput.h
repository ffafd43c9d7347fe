#pragma once

#include "cli/CompositionSummary.h"
#include "cli/ExitStatus.h"
#include "cli/RenderOptions.h"

namespace cli {

/// A file opened for playing: a composition as it is, or a document by way of its export.
struct PlayableInput {
  struct Failure {
    ExitStatus status = ExitStatus::InputUnreadable;
    foundation::Error error;
  };

  std::unique_ptr<runtime::CompositionRenderer> renderer;
  CompositionSummary summary;
  FrameRate rate;                ///< the format's, or 25 a second
  bool drawsBackground = false;  ///< the file draws its own background
  QStringList findings;          ///< from loading

  [[nodiscard]] static tl::expected<PlayableInput, Failure> load(const QString& path,
                                                                 bool background);
};

}  // namespace cli
