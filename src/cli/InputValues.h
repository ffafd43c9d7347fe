#pragma once

#include <QJsonValue>

#include "cli/LoadFailure.h"
#include "runtime/CompositionRenderer.h"

namespace cli {

/// A value that its input takes.
struct InputValue {
  QString key;
  runtime::Value value;
};

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
  /// What the assignment says, without setting it; `option` is what a wrong one is blamed on.
  [[nodiscard]] static tl::expected<InputValue, LoadFailure> read(
      const QString& assignment, const runtime::CompositionRenderer& renderer,
      const QString& option);
  /// A value for the port: numbers within its limits, true or false, titles or numbers of menu
  /// items, "#RRGGBB" and "#RRGGBBAA" colours, names of picture files, lists and objects for
  /// structures. InputSchema says the same.
  [[nodiscard]] static tl::expected<runtime::Value, LoadFailure> fromJson(
      const QJsonValue& json, const runtime::PortAttributes& port, const QString& folder);
  /// The same from a text: numbers in digits, also "on", "off", "yes", "no", "1" and "0" for true
  /// and false, structures as JSON.
  [[nodiscard]] static tl::expected<runtime::Value, LoadFailure> fromText(
      const QString& text, const runtime::PortAttributes& port, const QString& folder);
};

}  // namespace cli
