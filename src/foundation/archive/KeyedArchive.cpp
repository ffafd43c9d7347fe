#include "foundation/archive/KeyedArchive.h"

#include "foundation/PropertyList.h"
#include "foundation/detail/KeyedArchiveReader.h"
#include "foundation/detail/KeyedArchiveWriter.h"

namespace foundation {

Result<ArchiveValue> KeyedArchive::read(const QByteArray& bytes, const QString& fileName) {
  return PropertyList::fromData(bytes, fileName).and_then([&fileName](const PropertyValue& list) {
    return fromPropertyList(list, fileName);
  });
}

Result<ArchiveValue> KeyedArchive::fromPropertyList(const PropertyValue& list,
                                                    const QString& fileName) {
  return detail::KeyedArchiveReader(list.dictionary()).read(fileName);
}

Result<QByteArray> KeyedArchive::write(const ArchiveValue& value) {
  return toPropertyList(value).and_then(
      [](const PropertyValue& list) { return PropertyList::toBinary(list); });
}

Result<PropertyValue> KeyedArchive::toPropertyList(const ArchiveValue& value) {
  return detail::KeyedArchiveWriter().write(value);
}

}  // namespace foundation
