#pragma once

#include <QJsonObject>

#include "playout/ValueFailure.h"
#include "runtime/CompositionRenderer.h"

namespace playout {

/// A value that its input takes.
struct InputValue {
  QString key;
  runtime::Value value;
};

/// Reads values for published inputs from texts and JSON, as a playout system sends them.
class InputValues {
 public:
  /// A value for the port: numbers within its limits, true or false, titles or numbers of menu
  /// items, "#RRGGBB" and "#RRGGBBAA" colours, names of picture files, lists and objects for
  /// structures. Relative names of files start at the folder. InputSchema says the same.
  [[nodiscard]] static tl::expected<runtime::Value, ValueFailure> fromJson(
      const QJsonValue& json, const runtime::PortAttributes& port, const QString& folder);
  /// The same from a text: numbers in digits, also "on", "off", "yes", "no", "1" and "0" for true
  /// and false, structures as JSON.
  [[nodiscard]] static tl::expected<runtime::Value, ValueFailure> fromText(
      const QString& text, const runtime::PortAttributes& port, const QString& folder);
  /// The JSON value that the text stands for at the port; the text itself where it is none that the
  /// port takes.
  [[nodiscard]] static QJsonValue jsonFromText(const QString& text,
                                               const runtime::PortAttributes& port);
  /// All published inputs, in the order of the file; one that shares its key only once.
  [[nodiscard]] static std::vector<runtime::PortAttributes> inputsOf(
      const runtime::CompositionRenderer& renderer);
  /// The input of the key; fails with the names of those that there are.
  [[nodiscard]] static tl::expected<runtime::PortAttributes, ValueFailure> inputNamed(
      const QString& key, const runtime::CompositionRenderer& renderer);
  /// A value for each key of the object, all or none.
  [[nodiscard]] static tl::expected<std::vector<InputValue>, ValueFailure> fromObject(
      const QJsonObject& object, const runtime::CompositionRenderer& renderer,
      const QString& folder);
  /// A value for each key of the object that can have one; what cannot, and why, goes into the list
  /// as sentences.
  [[nodiscard]] static std::vector<InputValue> fittingOf(
      const QJsonObject& object, const runtime::CompositionRenderer& renderer,
      const QString& folder, QStringList& leftOut);
  /// A JSON file with one object.
  [[nodiscard]] static tl::expected<QJsonObject, ValueFailure> objectFromFile(const QString& path);
};

}  // namespace playout
