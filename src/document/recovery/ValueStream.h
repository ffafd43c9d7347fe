#pragma once

#include "foundation/PropertyValue.h"

namespace document {

/// Appends values to bytes in a compact form. Unlike a property list it takes every value: nulls,
/// control characters and halves of surrogate pairs too, so that nothing a user types can keep a
/// step out of the recovery data.
class ValueWriter {
 public:
  explicit ValueWriter(QByteArray& out) : m_out(out) {}
  void byte(quint8 value) { m_out.append(static_cast<char>(value)); }
  void number(quint64 value);  ///< seven bits a byte, the lowest first
  void text(QStringView value);
  void data(QByteArrayView value);
  void value(const foundation::PropertyValue& value);

 private:
  void fixed(quint64 bits);

  QByteArray& m_out;
};

/// Reads what ValueWriter wrote. Anything else makes it fail: from then on it gives empty values.
class ValueReader {
 public:
  explicit ValueReader(QByteArrayView bytes) : m_rest(bytes) {}
  [[nodiscard]] bool failed() const { return m_failed; }
  [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }
  quint8 byte();
  quint64 number();
  QString text();
  QByteArray data();
  foundation::PropertyValue value();

 private:
  foundation::PropertyValue containedValue(int depth);
  QByteArrayView take(quint64 size);
  quint64 fixed();

  QByteArrayView m_rest;
  bool m_failed = false;
};

}  // namespace document
