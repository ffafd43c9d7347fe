#pragma once

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"

namespace foundation {

/// Reads and writes property lists: the XML form 1.0 and the binary form 00.
///
/// Reading refuses damaged files with the line or byte and the reason. It also refuses files that
/// nest deeper than 512 containers, hold more than 16 million values, or exceed 512 MiB (for binary
/// files also once their shared values are written out). Entity declarations are not supported.
/// Writing gives the same bytes for equal values. All functions are safe to call from any thread.
class PropertyList {
 public:
  /// The file's name only serves the error messages.
  [[nodiscard]] static Result<PropertyValue> fromData(const QByteArray& bytes,
                                                      const QString& fileName);
  [[nodiscard]] static Result<PropertyValue> fromFile(const QString& path);

  /// UTF-8 with the keys in ascending order. Dates keep whole seconds. Fails for what the form
  /// cannot hold: null values, control characters, halves of surrogate pairs, dates outside the
  /// years 1-9999, more than 512 nested containers.
  [[nodiscard]] static Result<QByteArray> toXml(const PropertyValue& value);
  /// Equal strings are stored once. Fails like toXml(), but keeps control characters in values.
  [[nodiscard]] static Result<QByteArray> toBinary(const PropertyValue& value);
};

}  // namespace foundation
