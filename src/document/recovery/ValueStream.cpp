#include "document/recovery/ValueStream.h"

#include <QTimeZone>
#include <QtEndian>
#include <bit>
#include <utility>

namespace document {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using Type = PropertyValue::Type;

namespace {

constexpr int maximumDepth = 512;
constexpr quint64 maximumLength = quint64{1} << 32;  ///< of a text, in units of UTF-16
constexpr quint8 unsignedMark = 0x80;                ///< beside the type of an integer

}  // namespace

void ValueWriter::number(quint64 value) {
  for (; value >= 0x80; value >>= 7) byte(static_cast<quint8>(value | 0x80));
  byte(static_cast<quint8>(value));
}

void ValueWriter::fixed(quint64 bits) {
  const quint64 little = qToLittleEndian(bits);
  m_out.append(reinterpret_cast<const char*>(&little), sizeof little);
}

void ValueWriter::text(QStringView value) {
  number(static_cast<quint64>(value.size()));
  const qsizetype at = m_out.size();
  m_out.resize(at + value.size() * 2);
  qToLittleEndian<quint16>(value.utf16(), value.size(), m_out.data() + at);
}

void ValueWriter::data(QByteArrayView value) {
  number(static_cast<quint64>(value.size()));
  m_out.append(value);
}

void ValueWriter::value(const PropertyValue& value) {
  const PropertyValue::Integer integer = value.toExactInteger();
  byte(static_cast<quint8>(value.type()) | (integer.isUnsigned ? unsignedMark : 0));
  switch (value.type()) {
    case Type::Null:
      return;
    case Type::Boolean:
      return byte(value.toBool() ? 1 : 0);
    case Type::Integer:
      return fixed(integer.bits);
    case Type::Real:
      return fixed(std::bit_cast<quint64>(value.toDouble()));
    case Type::String:
      return text(value.toString());
    case Type::Data:
      return data(value.toData());
    case Type::Date:
      return fixed(static_cast<quint64>(value.toDate().toMSecsSinceEpoch()));
    case Type::Uid:
      return fixed(value.toUid().index);
    case Type::Array:
      number(static_cast<quint64>(value.array().size()));
      for (const PropertyValue& element : value.array()) this->value(element);
      return;
    case Type::Dictionary:
      number(static_cast<quint64>(value.dictionary().size()));
      for (const auto& [key, element] : value.dictionary()) {
        text(key);
        this->value(element);
      }
      return;
  }
}

QByteArrayView ValueReader::take(quint64 size) {
  if (m_failed || size > static_cast<quint64>(m_rest.size())) {
    m_failed = true;
    m_rest = {};
    return {};
  }
  const QByteArrayView taken = m_rest.first(static_cast<qsizetype>(size));
  m_rest = m_rest.sliced(taken.size());
  return taken;
}

quint8 ValueReader::byte() {
  const QByteArrayView taken = take(1);
  return taken.isEmpty() ? 0 : static_cast<quint8>(taken.front());
}

quint64 ValueReader::number() {
  quint64 value = 0;
  for (int shift = 0; shift < 64; shift += 7) {
    const quint8 part = byte();
    value |= static_cast<quint64>(part & 0x7F) << shift;
    if ((part & 0x80) == 0) return value;
  }
  m_failed = true;
  return 0;
}

quint64 ValueReader::fixed() {
  const QByteArrayView taken = take(sizeof(quint64));
  return taken.isEmpty() ? 0 : qFromLittleEndian<quint64>(taken.data());
}

QString ValueReader::text() {
  const quint64 length = number();
  const QByteArrayView taken = take(length > maximumLength ? ~quint64{0} : length * 2);
  QString text(taken.size() / 2, Qt::Uninitialized);
  if (!text.isEmpty()) qFromLittleEndian<quint16>(taken.data(), text.size(), text.data());
  return text;
}

QByteArray ValueReader::data() {
  return take(number()).toByteArray();
}

PropertyValue ValueReader::value() {
  return containedValue(0);
}

PropertyValue ValueReader::containedValue(int depth) {
  const quint8 mark = byte();
  if (depth > maximumDepth) m_failed = true;
  if (m_failed) return {};
  switch (static_cast<Type>(mark & ~unsignedMark)) {
    case Type::Null:
      return {};
    case Type::Boolean:
      return byte() != 0;
    case Type::Integer: {
      const quint64 bits = fixed();
      if ((mark & unsignedMark) != 0) return bits;
      return static_cast<qint64>(bits);
    }
    case Type::Real:
      return std::bit_cast<double>(fixed());
    case Type::String:
      return text();
    case Type::Data:
      return data();
    case Type::Date:
      return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(fixed()), Qt::UTC);
    case Type::Uid:
      return PropertyValue::Uid{fixed()};
    case Type::Array: {
      PropertyArray array;
      for (quint64 left = number(); left > 0 && !m_failed; --left)
        array.append(containedValue(depth + 1));
      return array;
    }
    case Type::Dictionary: {
      QList<PropertyDictionary::Entry> entries;
      for (quint64 left = number(); left > 0 && !m_failed; --left) {
        QString key = text();
        entries.append({std::move(key), containedValue(depth + 1)});
      }
      return PropertyDictionary::fromEntries(std::move(entries));
    }
  }
  m_failed = true;
  return {};
}

}  // namespace document
