#pragma once

#include "cli/LoadFailure.h"
#include "cli/RenderOptions.h"
#include "render/ValueSchedule.h"

namespace cli {

/// Sets published inputs as the command line says. A wrong key or a value that its input does not
/// take is wrong usage; a file that cannot be read is unreadable.
class InputAssignment {
 public:
  using Done = tl::expected<void, LoadFailure>;

  /// "KEY=VALUE". Relative picture names start at the current folder.
  [[nodiscard]] static Done assign(const QString& assignment,
                                   runtime::CompositionRenderer& renderer);
  /// What the assignment says, without setting it; `option` is what a wrong one is blamed on.
  [[nodiscard]] static tl::expected<playout::InputValue, LoadFailure> read(
      const QString& assignment, const runtime::CompositionRenderer& renderer,
      const QString& option);
  /// Reads all values that are sent while playing at once, so that a wrong one is told before
  /// anything is played.
  [[nodiscard]] static tl::expected<render::ValueSchedule, LoadFailure> schedule(
      const std::vector<RenderOptions::Update>& updates,
      const runtime::CompositionRenderer& renderer);
  /// The failure as this program tells it.
  [[nodiscard]] static LoadFailure told(const playout::ValueFailure& failure);
};

}  // namespace cli
