#pragma once

#include <QString>

namespace model {

/// A port's label taken apart: "Size [3] (Layout)" stands at position 3 of the category "Layout".
struct AttributeLabel {
  static constexpr quint64 noPosition = 9999;

  QString text;
  QString category;
  quint64 position = noPosition;

  /// A label with a category but no position keeps the category in its text.
  [[nodiscard]] static AttributeLabel parse(const QString& label);
};

}  // namespace model
