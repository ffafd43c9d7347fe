#include "foundation/archive/ArchiveValue.h"

#include "foundation/PropertyValue.h"

namespace foundation {

ArchiveDictionary::ArchiveDictionary() = default;
ArchiveDictionary::ArchiveDictionary(std::initializer_list<Entry> entries) : m_entries(entries) {}
ArchiveDictionary::ArchiveDictionary(QList<Entry> entries) : m_entries(std::move(entries)) {}
ArchiveDictionary::ArchiveDictionary(const ArchiveDictionary&) = default;
ArchiveDictionary::ArchiveDictionary(ArchiveDictionary&&) noexcept = default;
ArchiveDictionary& ArchiveDictionary::operator=(const ArchiveDictionary&) = default;
ArchiveDictionary& ArchiveDictionary::operator=(ArchiveDictionary&&) noexcept = default;
ArchiveDictionary::~ArchiveDictionary() = default;

const ArchiveValue& ArchiveDictionary::value(QStringView key) const {
  static const ArchiveValue nil;
  for (const Entry& entry : m_entries)
    if (entry.first == key) return entry.second;
  return nil;
}

void ArchiveDictionary::insert(const QString& key, const ArchiveValue& value) {
  for (Entry& entry : m_entries) {
    if (entry.first != key) continue;
    entry.second = value;
    return;
  }
  m_entries.append(Entry(key, value));
}

bool operator==(const ArchiveDictionary& a, const ArchiveDictionary& b) {
  return a.m_entries == b.m_entries;
}

ArchiveValue::ArchiveValue() = default;
ArchiveValue::ArchiveValue(bool value) : m_storage(value) {}
ArchiveValue::ArchiveValue(int value) : m_storage(static_cast<qint64>(value)) {}
ArchiveValue::ArchiveValue(qint64 value) : m_storage(value) {}
ArchiveValue::ArchiveValue(double value) : m_storage(value) {}
ArchiveValue::ArchiveValue(const QString& value) : m_storage(value) {}
ArchiveValue::ArchiveValue(const QByteArray& value) : m_storage(value) {}
ArchiveValue::ArchiveValue(QPointF value) : m_storage(value) {}
ArchiveValue::ArchiveValue(QSizeF value) : m_storage(value) {}
ArchiveValue::ArchiveValue(QRectF value) : m_storage(value) {}
ArchiveValue::ArchiveValue(Color value) : m_storage(value) {}
ArchiveValue::ArchiveValue(ArchiveImage value) : m_storage(std::move(value)) {}
ArchiveValue::ArchiveValue(ArchiveArray value) : m_storage(std::move(value)) {}
ArchiveValue::ArchiveValue(ArchiveDictionary value) : m_storage(std::move(value)) {}
ArchiveValue::ArchiveValue(ArchiveObject value) : m_storage(std::move(value)) {}
ArchiveValue::ArchiveValue(const ArchiveValue&) = default;
ArchiveValue::ArchiveValue(ArchiveValue&&) noexcept = default;
ArchiveValue& ArchiveValue::operator=(const ArchiveValue&) = default;
ArchiveValue& ArchiveValue::operator=(ArchiveValue&&) noexcept = default;
ArchiveValue::~ArchiveValue() = default;

QString ArchiveValue::toString() const {
  const QString* text = as<QString>();
  return text ? *text : QString();
}

double ArchiveValue::toDouble(double fallback) const {
  if (const bool* v = as<bool>()) return *v ? 1 : 0;
  if (const qint64* v = as<qint64>()) return static_cast<double>(*v);
  const double* v = as<double>();
  return v ? *v : fallback;
}

qint64 ArchiveValue::toInteger(qint64 fallback) const {
  if (const qint64* v = as<qint64>()) return *v;
  if (const double* v = as<double>()) return PropertyValue(*v).toInteger();
  const bool* v = as<bool>();
  return v ? (*v ? 1 : 0) : fallback;
}

bool ArchiveValue::toBool(bool fallback) const {
  return toInteger(fallback ? 1 : 0) != 0;
}

const ArchiveArray& ArchiveValue::array() const {
  static const ArchiveArray empty;
  const ArchiveArray* v = as<ArchiveArray>();
  return v ? *v : empty;
}

const ArchiveDictionary& ArchiveValue::dictionary() const {
  static const ArchiveDictionary empty;
  const ArchiveDictionary* v = as<ArchiveDictionary>();
  return v ? *v : empty;
}

bool operator==(const ArchiveValue& a, const ArchiveValue& b) {
  return a.m_storage == b.m_storage;
}

}  // namespace foundation
