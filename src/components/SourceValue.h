#pragma once

#include <QJsonValue>
#include <QString>
#include <optional>

#include "foundation/PropertyValue.h"

namespace components {

/// The type of an input that a source declares, with the port class that files name it by.
struct InputType {
  enum class Kind : quint8 { Number, Index, Boolean, String, Color, Image, Structure, Virtual };
  Kind kind = Kind::Number;
  QString portClass;

  /// By the word in the source ("number", "index" …); nothing for any other word.
  [[nodiscard]] static std::optional<InputType> named(const QString& word);
  [[nodiscard]] bool hasValue() const { return kind <= Kind::Color; }
  /// A value as files hold it for this type; nothing when it does not fit.
  [[nodiscard]] std::optional<foundation::PropertyValue> value(const QJsonValue& json) const;
};

/// "#RRGGBB" or "#RRGGBBAA" as files hold colours; nothing for any other text.
[[nodiscard]] std::optional<foundation::PropertyValue> colorValue(const QString& text);

/// Any JSON as a property value. {"color": "#…"} is a colour; whole numbers become integers. Null
/// becomes a null value.
[[nodiscard]] foundation::PropertyValue plainValue(const QJsonValue& json);

}  // namespace components
