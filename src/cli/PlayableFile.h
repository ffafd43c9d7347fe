#pragma once

#include "cli/LoadFailure.h"
#include "render/PlayableInput.h"

namespace cli {

/// A file of either kind opened for playing: a composition as it is, a document by way of its
/// export.
struct PlayableFile {
  /// The keys of a document's published inputs: as in a file that is exported by hand, or as in its
  /// own playout composition, which are those of its sets of values.
  enum class Keys { Exported, Sets };

  [[nodiscard]] static tl::expected<render::PlayableInput, LoadFailure> load(
      const QString& path, bool background, Keys keys = Keys::Exported);
};

}  // namespace cli
