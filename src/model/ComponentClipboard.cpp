#include "model/ComponentClipboard.h"

#include "foundation/archive/NonKeyedArchive.h"
#include "model/QuartzComponent.h"

namespace model {

using foundation::ArchiveArray;
using foundation::ArchiveDictionary;
using foundation::ArchiveValue;
using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using foundation::Result;

namespace {

ArchiveValue toArchive(const PropertyValue& value) {
  using Type = PropertyValue::Type;
  switch (value.type()) {
    case Type::Boolean:
      return value.toBool();
    case Type::Integer:
      return value.toInteger();
    case Type::Real:
      return value.toDouble();
    case Type::String:
      return value.toString();
    case Type::Data:
      return value.toData();
    case Type::Array: {
      ArchiveArray array;
      for (const PropertyValue& entry : value.array()) array.append(toArchive(entry));
      return array;
    }
    case Type::Dictionary: {
      ArchiveDictionary dictionary;
      for (const auto& [key, entry] : value.dictionary()) dictionary.insert(key, toArchive(entry));
      return dictionary;
    }
    default:
      return {};
  }
}

/// Archives know dates, points and other objects, of which component dictionaries hold none.
PropertyValue fromArchive(const ArchiveValue& value) {
  if (const auto* flag = value.as<bool>()) return *flag;
  if (const auto* integer = value.as<qint64>()) return *integer;
  if (const auto* real = value.as<double>()) return *real;
  if (const auto* text = value.as<QString>()) return *text;
  if (const auto* data = value.as<QByteArray>()) return *data;
  if (value.as<ArchiveArray>()) {
    PropertyArray array;
    for (const ArchiveValue& entry : value.array()) array.append(fromArchive(entry));
    return array;
  }
  if (value.as<ArchiveDictionary>()) {
    PropertyDictionary dictionary;
    for (const auto& [key, entry] : value.dictionary().entries())
      dictionary.insert(key, fromArchive(entry));
    return dictionary;
  }
  return {};
}

}  // namespace

Result<QByteArray> ComponentClipboard::dataForComponents(
    const QList<QuartzComponent*>& components) {
  ArchiveArray array;
  for (const QuartzComponent* component : components)
    array.append(toArchive(component->dictionaryWithData()));
  return foundation::NonKeyedArchive::write(array);
}

Result<QList<PropertyDictionary>> ComponentClipboard::dictionariesFromData(const QByteArray& data) {
  const auto value = foundation::NonKeyedArchive::read(data);
  if (!value) return tl::unexpected(value.error());
  QList<PropertyDictionary> dictionaries;
  for (const ArchiveValue& entry : value->array())
    if (entry.as<ArchiveDictionary>()) dictionaries.append(fromArchive(entry).dictionary());
  if (dictionaries.isEmpty())
    return foundation::failure(QStringLiteral("holds no components"), type());
  return dictionaries;
}

}  // namespace model
