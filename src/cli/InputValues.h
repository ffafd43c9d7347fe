#pragma once

#include <QJsonValue>

#include "foundation/Result.h"
#include "runtime/CompositionRenderer.h"

namespace cli {

/// Sets published inputs from texts and JSON values, as a playout system would.
class InputValues {
 public:
  /// "KEY=VALUE". Relative picture names start at the current folder.
  [[nodiscard]] static foundation::Result<void> assign(const QString& assignment,
                                                       runtime::CompositionRenderer& renderer);
  /// A JSON file with one object; relative picture names start at its folder.
  [[nodiscard]] static foundation::Result<void> assignFile(const QString& path,
                                                           runtime::CompositionRenderer& renderer);
  /// A value for a port of the type: numbers, true/false, menu titles, "#RRGGBB" and "#RRGGBBAA"
  /// colours, names of picture files, lists and objects for structures.
  [[nodiscard]] static foundation::Result<runtime::Value> fromJson(
      const QJsonValue& json, const runtime::PortAttributes& port, const QString& folder);
};

}  // namespace cli
