#pragma once

#include "cli/CompositionSummary.h"
#include "cli/DocumentLoader.h"
#include "cli/RenderOptions.h"

namespace cli {

/// A file opened for playing: a composition as it is, or a document by way of its export.
struct PlayableInput {
  std::unique_ptr<runtime::CompositionRenderer> renderer;
  CompositionSummary summary;
  FrameRate rate;                ///< the format's, or 25 a second
  bool isInterlaced = false;     ///< the format has two fields a frame
  bool drawsBackground = false;  ///< the file draws its own background
  QStringList findings;          ///< from loading

  [[nodiscard]] static tl::expected<PlayableInput, LoadFailure> load(const QString& path,
                                                                     bool background);
};

}  // namespace cli
