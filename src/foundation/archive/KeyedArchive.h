#pragma once

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"
#include "foundation/archive/ArchiveValue.h"

namespace foundation {

/// Archives whose fields have names: a property list with a table of objects that refer to each
/// other by number. Objects of classes without a form of their own are ArchiveObject with all
/// their fields. Refused: references that lead nowhere, cycles, objects nested deeper than 200, and
/// shared objects that expand beyond a million values.
class KeyedArchive {
 public:
  /// The root object of an XML or binary archive. The file's name only serves the messages.
  [[nodiscard]] static Result<ArchiveValue> read(const QByteArray& bytes,
                                                 const QString& fileName = {});
  [[nodiscard]] static Result<ArchiveValue> fromPropertyList(const PropertyValue& list,
                                                             const QString& fileName = {});

  /// A binary archive with the value as its root. Colours are written as calibrated RGB, images as
  /// one bitmap that holds the picture file.
  [[nodiscard]] static Result<QByteArray> write(const ArchiveValue& value);
  [[nodiscard]] static Result<PropertyValue> toPropertyList(const ArchiveValue& value);
};

}  // namespace foundation
