#include "foundation/PropertyList.h"

#include <plist/plist.h>

#include <QFile>
#include <cmath>

namespace foundation {

namespace {

PropertyValue fromNode(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      uint8_t v = 0;
      plist_get_bool_val(node, &v);
      return v != 0;
    }
    case PLIST_UINT: {
      uint64_t v = 0;
      plist_get_uint_val(node, &v);
      return static_cast<qint64>(v);
    }
    case PLIST_REAL: {
      double v = 0;
      plist_get_real_val(node, &v);
      return v;
    }
    case PLIST_STRING: {
      uint64_t length = 0;
      const char* text = plist_get_string_ptr(node, &length);
      return QString::fromUtf8(text, static_cast<qsizetype>(length));
    }
    case PLIST_DATA: {
      uint64_t length = 0;
      const char* bytes = plist_get_data_ptr(node, &length);
      return QByteArray(bytes, static_cast<qsizetype>(length));
    }
    case PLIST_ARRAY: {
      PropertyArray array;
      plist_array_iter it = nullptr;
      plist_array_new_iter(node, &it);
      plist_t item = nullptr;
      for (plist_array_next_item(node, it, &item); item; plist_array_next_item(node, it, &item))
        array.append(fromNode(item));
      free(it);
      return array;
    }
    case PLIST_DICT: {
      QList<PropertyDictionary::Entry> entries;
      plist_dict_iter it = nullptr;
      plist_dict_new_iter(node, &it);
      char* key = nullptr;
      plist_t item = nullptr;
      for (plist_dict_next_item(node, it, &key, &item); item;
           plist_dict_next_item(node, it, &key, &item)) {
        entries.append({QString::fromUtf8(key), fromNode(item)});
        free(key);
        key = nullptr;
      }
      free(it);
      return PropertyDictionary::fromEntries(std::move(entries));
    }
    default:
      return {};
  }
}

plist_t toNode(const PropertyValue& value) {
  switch (value.type()) {
    case PropertyValue::Type::Boolean:
      return plist_new_bool(value.toBool() ? 1 : 0);
    case PropertyValue::Type::Integer:
      return plist_new_uint(value.toExactInteger().bits);
    case PropertyValue::Type::Real:
      return plist_new_real(value.toDouble());
    case PropertyValue::Type::Data:
      return plist_new_data(value.toData().constData(),
                            static_cast<uint64_t>(value.toData().size()));
    case PropertyValue::Type::Array: {
      plist_t array = plist_new_array();
      for (const PropertyValue& entry : value.array())
        plist_array_append_item(array, toNode(entry));
      return array;
    }
    case PropertyValue::Type::Dictionary: {
      plist_t dictionary = plist_new_dict();
      for (const auto& [key, entry] : value.dictionary())
        plist_dict_set_item(dictionary, key.toUtf8().constData(), toNode(entry));
      return dictionary;
    }
    default:
      return plist_new_string(value.toString().toUtf8().constData());
  }
}

}  // namespace

Result<PropertyValue> PropertyList::fromData(const QByteArray& bytes, const QString& fileName) {
  plist_t root = nullptr;
  plist_from_memory(bytes.constData(), static_cast<uint32_t>(bytes.size()), &root);
  if (!root) return failure(QStringLiteral("is not a property list"), fileName);
  PropertyValue value = fromNode(root);
  plist_free(root);
  return value;
}

Result<PropertyValue> PropertyList::fromFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return failure(QStringLiteral("cannot be read: %1").arg(file.errorString()), path);
  return fromData(file.readAll(), path);
}

Result<QByteArray> PropertyList::toXml(const PropertyValue& value) {
  plist_t root = toNode(value);
  char* text = nullptr;
  uint32_t length = 0;
  plist_to_xml(root, &text, &length);
  plist_free(root);
  QByteArray bytes(text, static_cast<qsizetype>(length));
  free(text);
  return bytes;
}

}  // namespace foundation
