#pragma once

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"

namespace foundation {

/// Reading and writing of property lists.
class PropertyList {
 public:
  /// Any encoding; the name is for messages.
  [[nodiscard]] static Result<PropertyValue> fromData(const QByteArray& bytes,
                                                      const QString& fileName);
  [[nodiscard]] static Result<PropertyValue> fromFile(const QString& path);
  /// Keys are sorted: equal values give equal bytes.
  [[nodiscard]] static Result<QByteArray> toXml(const PropertyValue& value);
};

}  // namespace foundation
