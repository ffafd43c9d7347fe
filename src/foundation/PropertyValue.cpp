#include "foundation/PropertyValue.h"

#include <cmath>
#include <limits>

namespace foundation {

namespace {

using Integer = PropertyValue::Integer;

Integer integer(qint64 value) {
  return {static_cast<quint64>(value), false};
}

Integer integer(quint64 value) {
  return {value, value > static_cast<quint64>(std::numeric_limits<qint64>::max())};
}

qint64 saturated(double value) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  if (std::isnan(value)) return 0;
  if (value >= kLimit) return std::numeric_limits<qint64>::max();
  if (value < -kLimit) return std::numeric_limits<qint64>::min();
  return static_cast<qint64>(value);
}

}  // namespace

PropertyValue::PropertyValue(bool value) : m_value(value) {}
PropertyValue::PropertyValue(int value) : m_value(integer(static_cast<qint64>(value))) {}
PropertyValue::PropertyValue(qint64 value) : m_value(integer(value)) {}
PropertyValue::PropertyValue(quint64 value) : m_value(integer(value)) {}
PropertyValue::PropertyValue(double value) : m_value(value) {}
PropertyValue::PropertyValue(const QString& value) : m_value(value) {}
PropertyValue::PropertyValue(QString&& value) : m_value(std::move(value)) {}
PropertyValue::PropertyValue(const char16_t* value) : m_value(QString::fromUtf16(value)) {}
PropertyValue::PropertyValue(QByteArray value) : m_value(std::move(value)) {}
PropertyValue::PropertyValue(QDateTime value) : m_value(std::move(value)) {}
PropertyValue::PropertyValue(Uid value) : m_value(value) {}
PropertyValue::PropertyValue(PropertyArray value) : m_value(std::move(value)) {}
PropertyValue::PropertyValue(PropertyDictionary value) : m_value(std::move(value)) {}
PropertyValue::PropertyValue(const PropertyValue&) = default;
PropertyValue& PropertyValue::operator=(const PropertyValue&) = default;

PropertyValue PropertyValue::fromFloat(float value) {
  return {static_cast<double>(value)};
}

bool PropertyValue::isNumeric() const {
  return type() == Type::Boolean || type() == Type::Integer || type() == Type::Real;
}

bool PropertyValue::toBool(bool fallback) const {
  if (const bool* v = std::get_if<bool>(&m_value)) return *v;
  if (const Integer* v = std::get_if<Integer>(&m_value)) return v->bits != 0;
  if (const double* v = std::get_if<double>(&m_value)) return *v != 0 && !std::isnan(*v);
  return fallback;
}

qint64 PropertyValue::toInteger(qint64 fallback) const {
  if (const bool* v = std::get_if<bool>(&m_value)) return *v ? 1 : 0;
  if (const Integer* v = std::get_if<Integer>(&m_value))
    return v->isUnsigned ? std::numeric_limits<qint64>::max() : static_cast<qint64>(v->bits);
  if (const double* v = std::get_if<double>(&m_value)) return saturated(*v);
  return fallback;
}

double PropertyValue::toDouble(double fallback) const {
  if (const bool* v = std::get_if<bool>(&m_value)) return *v ? 1 : 0;
  if (const Integer* v = std::get_if<Integer>(&m_value))
    return v->isUnsigned ? static_cast<double>(v->bits)
                         : static_cast<double>(static_cast<qint64>(v->bits));
  if (const double* v = std::get_if<double>(&m_value)) return *v;
  return fallback;
}

QString PropertyValue::toString() const {
  const QString* v = std::get_if<QString>(&m_value);
  return v ? *v : QString();
}

QByteArray PropertyValue::toData() const {
  const QByteArray* v = std::get_if<QByteArray>(&m_value);
  return v ? *v : QByteArray();
}

QDateTime PropertyValue::toDate() const {
  const QDateTime* v = std::get_if<QDateTime>(&m_value);
  return v ? *v : QDateTime();
}

PropertyValue::Uid PropertyValue::toUid() const {
  const Uid* v = std::get_if<Uid>(&m_value);
  return v ? *v : Uid();
}

PropertyValue::Integer PropertyValue::toExactInteger() const {
  const Integer* v = std::get_if<Integer>(&m_value);
  return v ? *v : Integer();
}

const PropertyArray& PropertyValue::array() const {
  static const PropertyArray empty;
  const PropertyArray* v = std::get_if<PropertyArray>(&m_value);
  return v ? *v : empty;
}

const PropertyDictionary& PropertyValue::dictionary() const {
  static const PropertyDictionary empty;
  const PropertyDictionary* v = std::get_if<PropertyDictionary>(&m_value);
  return v ? *v : empty;
}

PropertyArray& PropertyValue::editArray() {
  if (!isArray()) m_value.emplace<PropertyArray>();
  return std::get<PropertyArray>(m_value);
}

PropertyDictionary& PropertyValue::editDictionary() {
  if (!isDictionary()) m_value.emplace<PropertyDictionary>();
  return std::get<PropertyDictionary>(m_value);
}

bool operator==(const PropertyValue& a, const PropertyValue& b) {
  const double* x = std::get_if<double>(&a.m_value);
  const double* y = std::get_if<double>(&b.m_value);
  if (x && y && std::isnan(*x) && std::isnan(*y)) return true;
  return a.m_value == b.m_value;
}

}  // namespace foundation
