#pragma once

#include <QCoreApplication>

#include "preview/fields/Field.h"

namespace preview {

/// Words about a field, for those who fill it in.
class FieldDescription {
  Q_DECLARE_TR_FUNCTIONS(FieldDescription)

 public:
  [[nodiscard]] static QString typeName(const runtime::PortAttributes& port);
  /// "0 to 99", "from 0", "up to 1", or nothing.
  [[nodiscard]] static QString limits(const runtime::PortAttributes& port);
  /// What a number has to be, as a sentence.
  [[nodiscard]] static QString wanted(const runtime::PortAttributes& port);
  /// A value on one line.
  [[nodiscard]] static QString valueText(const runtime::Value& value,
                                         const runtime::PortAttributes& port);
  /// Key, type, limits and default, on one line.
  [[nodiscard]] static QString line(const runtime::PortAttributes& port);
  /// The same, a line each, below the label.
  [[nodiscard]] static QString toolTip(const runtime::PortAttributes& port);
};

}  // namespace preview
