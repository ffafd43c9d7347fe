#pragma once

#include "cli/LoadFailure.h"
#include "render/PlayableInput.h"

namespace cli {

/// A file of either kind opened for playing: a composition as it is, a document by way of its
/// export.
struct PlayableFile {
  [[nodiscard]] static tl::expected<render::PlayableInput, LoadFailure> load(const QString& path,
                                                                             bool background);
};

}  // namespace cli
