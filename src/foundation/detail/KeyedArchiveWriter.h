#pragma once

#include <QHash>

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"
#include "foundation/archive/ArchiveValue.h"

namespace foundation::detail {

/// Builds the object table of a keyed archive. Equal strings are one object.
class KeyedArchiveWriter {
 public:
  [[nodiscard]] Result<PropertyValue> write(const ArchiveValue& value);

 private:
  PropertyValue::Uid add(const ArchiveValue& value);
  PropertyValue::Uid addString(const QString& text);
  PropertyValue::Uid append(const PropertyValue& stored);
  /// An object of the class, which derives from the further names and NSObject.
  PropertyValue::Uid addObject(const QStringList& classNames, PropertyDictionary fields);
  PropertyValue::Uid classNamed(const QStringList& names);
  PropertyValue::Uid addArray(const ArchiveArray& items);
  PropertyValue::Uid addDictionary(const ArchiveDictionary& dictionary);
  PropertyValue::Uid addGeometry(int kind, const QString& key, const QString& text);
  PropertyValue::Uid addColor(const Color& color);
  PropertyValue::Uid addImage(const ArchiveImage& image);
  PropertyValue::Uid addGeneric(const ArchiveObject& object);

  PropertyArray m_objects;
  QHash<QString, quint64> m_strings;
  QHash<QString, quint64> m_classes;
  int m_depth = 0;
  QString m_problem;
};

}  // namespace foundation::detail
