#include "foundation/detail/PlistBinaryWriter.h"

#include <bit>

#include "foundation/detail/PlistProblem.h"
#include "foundation/detail/PlistXmlWriter.h"

namespace foundation::detail {

namespace {

constexpr qint64 kReferenceDateMs = 978307200000;  // 2001-01-01 since 1970

void appendBigEndian(QByteArray& out, quint64 value, int width) {
  for (int i = width - 1; i >= 0; --i) out.append(static_cast<char>(value >> (8 * i)));
}

// The exponent e of the narrowest width 2^e that holds the value.
int widthExponent(quint64 value) {
  return value <= 0xFF ? 0 : value <= 0xFFFF ? 1 : value <= 0xFFFFFFFF ? 2 : 3;
}

QByteArray integerObject(PropertyValue::Integer value) {
  QByteArray out;
  if (value.isUnsigned) {
    out.append('\x14');
    appendBigEndian(out, 0, 8);
    appendBigEndian(out, value.bits, 8);
    return out;
  }
  const int exponent = widthExponent(value.bits);  // negative numbers take all eight bytes
  out.append(static_cast<char>(0x10 | exponent));
  appendBigEndian(out, value.bits, 1 << exponent);
  return out;
}

void appendMarker(QByteArray& out, int kind, quint64 count) {
  out.append(static_cast<char>(kind << 4 | static_cast<int>(qMin<quint64>(count, 0xF))));
  if (count >= 0xF) out += integerObject({count, false});
}

QByteArray stringObject(const QString& text) {
  QByteArray out;
  // Readers in C end ASCII text at a zero character.
  const bool ascii =
      std::all_of(text.begin(), text.end(), [](QChar c) { return c < u'\x80' && c != u'\0'; });
  appendMarker(out, ascii ? 0x5 : 0x6, static_cast<quint64>(text.size()));
  if (ascii) return out + text.toLatin1();
  for (const QChar c : text) appendBigEndian(out, c.unicode(), 2);
  return out;
}

QByteArray realObject(char marker, double value) {
  QByteArray out(1, marker);
  appendBigEndian(out, std::bit_cast<quint64>(value), 8);
  return out;
}

int bytesFor(quint64 value) {
  return 1 << widthExponent(value);
}

}  // namespace

Result<QByteArray> PlistBinaryWriter::write(const PropertyValue& value) {
  const quint32 root = add(value, 0);
  if (!m_problem.isEmpty())
    return failure(QStringLiteral("The property list cannot be written"), {}, m_problem);
  const int referenceWidth = bytesFor(m_objects.size());
  m_out = "bplist00";
  std::vector<quint64> offsets;
  offsets.reserve(m_objects.size());
  for (const Object& object : m_objects) {
    offsets.push_back(static_cast<quint64>(m_out.size()));
    append(object, referenceWidth);
  }
  const auto table = static_cast<quint64>(m_out.size());
  const int offsetWidth = bytesFor(table);
  for (const quint64 offset : offsets) appendBigEndian(m_out, offset, offsetWidth);
  m_out.append(6, '\0');
  m_out.append(static_cast<char>(offsetWidth)).append(static_cast<char>(referenceWidth));
  appendBigEndian(m_out, m_objects.size(), 8);
  appendBigEndian(m_out, root, 8);
  appendBigEndian(m_out, table, 8);
  return std::move(m_out);
}

void PlistBinaryWriter::append(const Object& object, int referenceWidth) {
  if (object.container == 0) {
    m_out += object.scalar;
    return;
  }
  const size_t lists = object.container == 0xD ? 2 : 1;
  appendMarker(m_out, object.container, object.references.size() / lists);
  for (const quint32 reference : object.references)
    appendBigEndian(m_out, reference, referenceWidth);
}

void PlistBinaryWriter::fail(const QString& reason) {
  if (m_problem.isEmpty()) m_problem = reason;
}

quint32 PlistBinaryWriter::add(const PropertyValue& value, int depth) {
  if (depth >= kMaxPlistDepth) fail(QStringLiteral("nested too deeply"));
  if (!m_problem.isEmpty()) return 0;
  if (value.isString()) return addString(value.toString());
  if (value.isArray() || value.isDictionary()) return addContainer(value, depth);
  m_objects.push_back({scalar(value), {}, 0});
  return static_cast<quint32>(m_objects.size() - 1);
}

quint32 PlistBinaryWriter::addContainer(const PropertyValue& value, int depth) {
  const auto index = static_cast<quint32>(m_objects.size());
  m_objects.emplace_back();
  std::vector<quint32> references;
  if (value.isArray()) {
    for (const PropertyValue& item : value.array()) references.push_back(add(item, depth + 1));
  } else {
    for (const auto& entry : value.dictionary()) {
      if (entry.first.contains(QChar(u'\0'))) fail(QStringLiteral("a key with a zero character"));
      references.push_back(addString(entry.first));
    }
    for (const auto& entry : value.dictionary()) references.push_back(add(entry.second, depth + 1));
  }
  m_objects[index].container = value.isArray() ? 0xA : 0xD;
  m_objects[index].references = std::move(references);
  return index;
}

quint32 PlistBinaryWriter::addString(const QString& text) {
  if (!isStorableText(text, false)) fail(QStringLiteral("half of a surrogate pair in text"));
  const auto known = m_strings.constFind(text);
  if (known != m_strings.constEnd()) return *known;
  const auto index = static_cast<quint32>(m_objects.size());
  m_objects.push_back({stringObject(text), {}, 0});
  m_strings.insert(text, index);
  return index;
}

QByteArray PlistBinaryWriter::scalar(const PropertyValue& value) {
  switch (value.type()) {
    case PropertyValue::Type::Boolean:
      return QByteArray(1, value.toBool() ? '\x09' : '\x08');
    case PropertyValue::Type::Integer:
      return integerObject(value.toExactInteger());
    case PropertyValue::Type::Real:
      return realObject('\x23', value.toDouble());
    case PropertyValue::Type::Date:
      return date(value.toDate());
    case PropertyValue::Type::Data: {
      QByteArray out;
      appendMarker(out, 0x4, static_cast<quint64>(value.toData().size()));
      return out + value.toData();
    }
    case PropertyValue::Type::Uid: {
      const int width = bytesFor(value.toUid().index);
      QByteArray out(1, static_cast<char>(0x80 | (width - 1)));
      appendBigEndian(out, value.toUid().index, width);
      return out;
    }
    default:
      fail(QStringLiteral("there is no value"));
      return {};
  }
}

QByteArray PlistBinaryWriter::date(const QDateTime& date) {
  if (!isStorableDate(date)) fail(QStringLiteral("a date outside the years 1-9999"));
  return realObject('\x33',
                    static_cast<double>(date.toMSecsSinceEpoch() - kReferenceDateMs) / 1000.0);
}

}  // namespace foundation::detail
