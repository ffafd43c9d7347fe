#include "store/xml/ValueReader.h"

#include <QDateTime>
#include <QTimeZone>
#include <charconv>

#include "foundation/Base64.h"

namespace store::xml {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using foundation::textFromUtf8;

namespace {

bool isSpace(char c) {
  return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

template <typename T>
std::optional<T> number(std::string_view text) {
  T value{};
  const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end.ec != std::errc() || end.ptr != text.data() + text.size()) return {};
  return value;
}

std::optional<PropertyValue> integer(std::string_view text) {
  if (const auto value = number<qint64>(text)) return PropertyValue(*value);
  if (const auto value = number<quint64>(text)) return PropertyValue(*value);
  return {};
}

/// "2026-03-01T12:00:00.000Z", "@" and milliseconds since 1970 for distant ones, nothing for none.
std::optional<PropertyValue> date(std::string_view text) {
  if (text.empty()) return PropertyValue(QDateTime());
  if (text.front() == '@') {
    const auto milliseconds = number<qint64>(text.substr(1));
    if (!milliseconds) return {};
    QDateTime distant = QDateTime::fromMSecsSinceEpoch(*milliseconds, QTimeZone::utc());
    if (!distant.isValid()) return {};
    return PropertyValue(std::move(distant));
  }
  const QDateTime date = QDateTime::fromString(textFromUtf8(text.substr(0, 64)), Qt::ISODateWithMs);
  if (!date.isValid() || text.back() != 'Z') return {};
  return PropertyValue(date);
}

std::optional<PropertyValue> boolean(std::string_view text) {
  if (text == "true" || text == "1") return PropertyValue(true);
  if (text == "false" || text == "0") return PropertyValue(false);
  return {};
}

std::optional<PropertyValue> scalarValue(std::string_view type, std::string_view text) {
  if (type == "integer") return integer(text);
  if (type == "real") {
    const auto value = number<double>(text);
    return value ? std::optional<PropertyValue>(*value) : std::nullopt;
  }
  if (type == "boolean") return boolean(text);
  if (type == "date") return date(text);
  if (type == "null" && text.empty()) return PropertyValue();
  if (type == "uid")
    if (const auto index = number<quint64>(text)) return PropertyValue(PropertyValue::Uid{*index});
  return {};
}

}  // namespace

QString ValueReader::attributeText(std::string_view raw) {
  if (raw.find_first_of("&\t\n\r") == std::string_view::npos) return m_pool.text(raw);
  if (!XmlScanner::decode(raw, true, m_buffer))
    m_scanner.failAt(m_scanner.start(), QStringLiteral("a reference (&...;) that is not known"));
  return m_pool.text(m_buffer);
}

std::optional<QString> ValueReader::key() {
  for (const XmlScanner::Attribute& attribute : m_scanner.attributes()) {
    if (attribute.name == "key") return attributeText(attribute.raw);
    if (attribute.name == "escapedKey") return unescaped(attributeText(attribute.raw));
  }
  return {};
}

ValueReader::Value ValueReader::read() {
  const std::string_view type = m_scanner.name();
  bool isWhole = true;
  bool isEscaped = false;
  std::optional<QString> block;
  for (const XmlScanner::Attribute& attribute : m_scanner.attributes()) {
    if (attribute.name == "key" || attribute.name == "escapedKey") continue;
    if (attribute.name == "escaped" && attribute.raw == "true" && type == "string")
      isEscaped = true;
    else if (attribute.name == "block" && type == "data")
      block = attributeText(attribute.raw);
    else
      isWhole = false;
  }
  Value read;
  if (type == "string")
    read = string(isEscaped);
  else if (type == "data")
    read = data(block);
  else if (type == "array")
    read = array();
  else if (type == "dictionary")
    read = dictionary();
  else
    read = scalar(type);
  read.isWhole = read.isWhole && isWhole;
  return read;
}

std::string_view ValueReader::trimmedText(Value& value) {
  bool hasElements = false;
  std::string_view text = m_scanner.readText(hasElements);
  if (hasElements) value.isReadable = false;
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

ValueReader::Value ValueReader::scalar(std::string_view type) {
  Value read;
  const std::string_view text = trimmedText(read);
  if (auto value = scalarValue(type, text))
    read.value = std::move(*value);
  else
    read.isReadable = false;
  return read;
}

ValueReader::Value ValueReader::string(bool isEscaped) {
  Value read;
  bool hasElements = false;
  QString text = m_pool.text(m_scanner.readText(hasElements));
  read.isReadable = !hasElements;
  if (isEscaped) {
    if (auto plain = unescaped(text))
      text = std::move(*plain);
    else
      read.isReadable = false;
  }
  read.value = std::move(text);
  return read;
}

ValueReader::Value ValueReader::data(const std::optional<QString>& block) {
  Value read;
  const std::string_view text = trimmedText(read);
  if (block && !block->isEmpty() && text.empty()) {
    read.value = m_blocks.reference(block->toUtf8());
    read.namesBlocks = true;
  } else if (auto bytes = block ? std::nullopt : foundation::bytesFromBase64(text)) {
    read.value = std::move(*bytes);
  } else {
    read.isReadable = false;
  }
  return read;
}

ValueReader::Value ValueReader::array() {
  Value read;
  PropertyArray items;
  while (m_scanner.nextChild()) {
    if (!m_scanner.attributes().empty() && key()) read.isWhole = false;
    Value item = this->read();
    read.isReadable = read.isReadable && item.isReadable;
    read.isWhole = read.isWhole && item.isWhole;
    read.namesBlocks = read.namesBlocks || item.namesBlocks;
    items.append(std::move(item.value));
  }
  read.value = std::move(items);
  return read;
}

ValueReader::Value ValueReader::dictionary() {
  Value read;
  QList<PropertyDictionary::Entry> entries;
  while (m_scanner.nextChild()) {
    const std::optional<QString> key = this->key();
    Value item = this->read();
    read.isReadable = read.isReadable && item.isReadable;
    read.isWhole = read.isWhole && item.isWhole && key;
    read.namesBlocks = read.namesBlocks || item.namesBlocks;
    if (key) entries.append({*key, std::move(item.value)});
  }
  const qsizetype count = entries.size();
  PropertyDictionary dictionary = PropertyDictionary::fromEntries(std::move(entries));
  read.isWhole = read.isWhole && dictionary.size() == count;
  read.value = std::move(dictionary);
  return read;
}

}  // namespace store::xml
