#pragma once

#include "model/Attribute.h"

namespace model {

/// How attributes are written down for people: their types, and values of the types that can be
/// animated. AttributeValue::description() writes the values.
class AttributeWords {
 public:
  /// "number", "color" and so on; an index with a menu is an "index" too.
  [[nodiscard]] static QString typeWord(AttributeType type);
  /// Of the types that can be animated; none for other words.
  [[nodiscard]] static std::optional<AttributeType> typeFromWord(const QString& word);
  /// Numbers with a point or a comma, "true" and "false", "#RRGGBB" and "#RRGGBBAA". None when the
  /// text is no value of the type, or the type cannot be animated.
  [[nodiscard]] static std::optional<AttributeValue> valueFromText(const QString& text,
                                                                   AttributeType type);
};

}  // namespace model
