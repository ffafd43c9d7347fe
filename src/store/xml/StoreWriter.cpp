#include "store/xml/StoreWriter.h"

#include <QCryptographicHash>
#include <QDateTime>

#include "store/xml/XmlText.h"

namespace store::xml {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

QByteArray integerText(const PropertyValue::Integer& number) {
  return number.isUnsigned ? QByteArray::number(number.bits)
                           : QByteArray::number(static_cast<qint64>(number.bits));
}

QByteArray dateText(const QDateTime& date) {
  if (!date.isValid()) return {};
  const QDateTime utc = date.toUTC();
  const int year = utc.date().year();
  if (year < 1 || year > 9999) return '@' + QByteArray::number(utc.toMSecsSinceEpoch());
  return utc.toString(Qt::ISODateWithMs).toLatin1();
}

}  // namespace

StoreWriter::StoreWriter(int version, const QByteArray& attributes,
                         QMap<QByteArray, QByteArray> blocks)
    : m_blocks(std::move(blocks)) {
  m_out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<store version=\"";
  m_out += QByteArray::number(version) + '"' + attributes + ">\n";
}

void StoreWriter::beginObject(const QString& entity, ObjectId id, const QByteArray& attributes) {
  m_out += "  <object entity=\"";
  appendAttributeText(entity, m_out);
  m_out += "\" id=\"" + QByteArray::number(id) + '"' + attributes + ">\n";
  ++m_depth;
}

void StoreWriter::endObject() {
  --m_depth;
  m_out += "  </object>\n";
}

void StoreWriter::object(const StoredObject& object) {
  beginObject(object.entity, object.id, object.attributes);
  for (const StoredRelation& relation : object.relations) stored(relation);
  for (const StoredValue& value : object.values) stored(value);
  elements(object.elements);
  endObject();
}

void StoreWriter::relation(const QString& key, ObjectId to) {
  line("relation", keyAttribute(key) + " to=\"" + QByteArray::number(to) + '"', {});
}

void StoreWriter::value(const QString& key, const PropertyValue& value) {
  keyedValue(keyAttribute(key), value);
}

void StoreWriter::stored(const StoredRelation& relation) {
  if (relation.element.isEmpty())
    this->relation(relation.key, relation.to);
  else
    elements({relation.element});
}

void StoreWriter::stored(const StoredValue& value) {
  if (value.element.isEmpty())
    this->value(value.key, value.value);
  else
    elements({value.element});
}

void StoreWriter::elements(const QList<QByteArray>& elements) {
  for (const QByteArray& element : elements) {
    indent();
    m_out += element;
    m_out += '\n';
  }
}

QByteArray StoreWriter::keyAttribute(const QString& key) {
  QByteArray& attribute = m_keyAttributes[key];
  if (attribute.isEmpty()) {
    const bool isEscaped = needsEscapes(key);
    attribute = isEscaped ? " escapedKey=\"" : " key=\"";
    appendAttributeText(isEscaped ? escaped(key) : key, attribute);
    attribute += '"';
  }
  return attribute;
}

void StoreWriter::line(const char* type, const QByteArray& attributes, const QByteArray& content) {
  indent();
  m_out += '<';
  m_out += type;
  m_out += attributes;
  if (content.isEmpty()) {
    m_out += "/>\n";
    return;
  }
  m_out += '>';
  m_out += content;
  m_out += "</";
  m_out += type;
  m_out += ">\n";
}

void StoreWriter::keyedValue(const QByteArray& key, const PropertyValue& value) {
  switch (value.type()) {
    case PropertyValue::Type::Null:
      return line("null", key, {});
    case PropertyValue::Type::Boolean:
      return line("boolean", key, value.toBool() ? "true" : "false");
    case PropertyValue::Type::Integer:
      return line("integer", key, integerText(value.toExactInteger()));
    case PropertyValue::Type::Real:
      return line("real", key, realText(value.toDouble()));
    case PropertyValue::Type::String:
      return string(key, value.toString());
    case PropertyValue::Type::Data:
      return data(key, value.toData());
    case PropertyValue::Type::Date:
      return line("date", key, dateText(value.toDate()));
    case PropertyValue::Type::Uid:
      return line("uid", key, QByteArray::number(value.toUid().index));
    case PropertyValue::Type::Array:
      return array(key, value.array());
    case PropertyValue::Type::Dictionary:
      return dictionary(key, value.dictionary());
  }
}

void StoreWriter::string(const QByteArray& key, const QString& text) {
  const bool isEscaped = needsEscapes(text);
  QByteArray content;
  appendText(isEscaped ? escaped(text) : text, content);
  line("string", isEscaped ? key + " escaped=\"true\"" : key, content);
}

void StoreWriter::data(const QByteArray& key, const QByteArray& bytes) {
  if (bytes.size() <= lineBytes)
    line("data", key, bytes.toBase64());
  else
    line("data", key + " block=\"" + blockName(bytes) + '"', {});
}

void StoreWriter::array(const QByteArray& key, const PropertyArray& items) {
  if (items.isEmpty()) return line("array", key, {});
  indent();
  m_out += "<array" + key + ">\n";
  ++m_depth;
  for (const PropertyValue& item : items) keyedValue({}, item);
  --m_depth;
  indent();
  m_out += "</array>\n";
}

void StoreWriter::dictionary(const QByteArray& key, const PropertyDictionary& entries) {
  if (entries.isEmpty()) return line("dictionary", key, {});
  indent();
  m_out += "<dictionary" + key + ">\n";
  ++m_depth;
  for (const auto& [entryKey, value] : entries) keyedValue(keyAttribute(entryKey), value);
  --m_depth;
  indent();
  m_out += "</dictionary>\n";
}

QByteArray StoreWriter::blockName(const QByteArray& bytes) {
  // Bytes that are shared in memory need to be looked at only once.
  const auto known = m_namesByStorage.constFind(bytes.constData());
  if (known != m_namesByStorage.cend() && m_blocks.value(*known).size() == bytes.size())
    return *known;
  QByteArray name = QCryptographicHash::hash(bytes, QCryptographicHash::Blake2b_160).toHex();
  // Only a block that came with the file under that name can hold something else.
  while (m_blocks.contains(name) && m_blocks.value(name) != bytes) name += '-';
  const QByteArray held = *m_blocks.insert(name, m_blocks.value(name, bytes));
  m_namesByStorage.insert(held.constData(), name);
  return name;
}

QByteArray StoreWriter::finish(const QList<QByteArray>& others) {
  m_depth = 1;
  elements(others);
  for (auto it = m_blocks.cbegin(); it != m_blocks.cend(); ++it) {
    const QByteArray& bytes = it.value();
    m_out += "  <block name=\"";
    appendAttributeText(QString::fromUtf8(it.key()), m_out);
    m_out += "\">\n";
    for (qsizetype at = 0; at < bytes.size(); at += lineBytes) {
      const qsizetype size = std::min(lineBytes, bytes.size() - at);
      m_out += QByteArray::fromRawData(bytes.constData() + at, size).toBase64();
      m_out += '\n';
    }
    m_out += "  </block>\n";
  }
  m_out += "</store>\n";
  return std::move(m_out);
}

}  // namespace store::xml
