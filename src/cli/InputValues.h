#pragma once

#include <QJsonValue>

#include "cli/LoadFailure.h"
#include "runtime/CompositionRenderer.h"

namespace cli {

/// Sets published inputs from texts and JSON values, as a playout system would. A wrong key or a
/// value that its port does not take is wrong usage; a file that cannot be read is unreadable.
class InputValues {
 public:
  using Done = tl::expected<void, LoadFailure>;

  /// "KEY=VALUE". Relative picture names start at the current folder.
  [[nodiscard]] static Done assign(const QString& assignment,
                                   runtime::CompositionRenderer& renderer);
  /// A JSON file with one object; relative picture names start at its folder.
  [[nodiscard]] static Done assignFile(const QString& path, runtime::CompositionRenderer& renderer);
  /// A value for a port of the type: numbers, true/false, menu titles, "#RRGGBB" and "#RRGGBBAA"
  /// colours, names of picture files, lists and objects for structures (or their JSON text).
  [[nodiscard]] static tl::expected<runtime::Value, LoadFailure> fromJson(
      const QJsonValue& json, const runtime::PortAttributes& port, const QString& folder);
};

}  // namespace cli
