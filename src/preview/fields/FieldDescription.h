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
  /// What stands behind the key: type (unless the control shows it), limits and default.
  [[nodiscard]] static QString details(const runtime::PortAttributes& port);
  /// Label, key, type, limits and default, a line each.
  [[nodiscard]] static QString toolTip(const runtime::PortAttributes& port);
};

}  // namespace preview
