#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <initializer_list>
#include <utility>
#include <variant>

namespace foundation {

class PropertyValue;
using PropertyArray = QList<PropertyValue>;

/// The dictionary of a property list: unique string keys, kept in ascending key order so that equal
/// content always reads and writes in the same order. Implicitly shared.
class PropertyDictionary {
 public:
  using Entry = std::pair<QString, PropertyValue>;
  PropertyDictionary();
  PropertyDictionary(std::initializer_list<Entry> entries);  ///< later duplicates win
  PropertyDictionary(const PropertyDictionary&);
  PropertyDictionary(PropertyDictionary&&) noexcept;
  PropertyDictionary& operator=(const PropertyDictionary&);
  PropertyDictionary& operator=(PropertyDictionary&&) noexcept;
  ~PropertyDictionary();

  [[nodiscard]] bool isEmpty() const { return m_entries.isEmpty(); }
  [[nodiscard]] qsizetype size() const { return m_entries.size(); }
  [[nodiscard]] bool contains(QStringView key) const;
  /// The value under the key, or a null value.
  [[nodiscard]] const PropertyValue& value(QStringView key) const;
  [[nodiscard]] const PropertyValue& operator[](QStringView key) const { return value(key); }
  /// The entry under the key, created null when missing; stays valid until the next insertion.
  [[nodiscard]] PropertyValue& edit(const QString& key);
  void insert(const QString& key, PropertyValue value);  ///< replaces an earlier value
  PropertyValue take(QStringView key);                   ///< removes and returns
  bool remove(QStringView key);
  [[nodiscard]] QStringList keys() const;

  [[nodiscard]] QList<Entry>::const_iterator begin() const { return m_entries.cbegin(); }
  [[nodiscard]] QList<Entry>::const_iterator end() const { return m_entries.cend(); }

  /// Takes entries in any order (later duplicates win): the fast way to build a large dictionary.
  [[nodiscard]] static PropertyDictionary fromEntries(QList<Entry> entries);

  friend bool operator==(const PropertyDictionary&, const PropertyDictionary&);

 private:
  QList<Entry> m_entries;
};

/// One value of a property list: a cheap-to-copy tree (containers are shared until written to).
/// Integers, reals and booleans are different types and compare unequal; the lenient readers
/// convert between them, as composition files mix them freely.
class PropertyValue {
 public:
  enum class Type : quint8 {
    Null,  ///< no value; never written to a file
    Boolean,
    Integer,
    Real,
    String,
    Data,
    Date,
    Uid,  ///< reference into the object table of a keyed archive
    Array,
    Dictionary
  };
  struct Uid {
    quint64 index = 0;
    friend bool operator==(const Uid&, const Uid&) = default;
  };
  /// An integer as property lists know it: any value of a signed or unsigned 64-bit number.
  struct Integer {
    quint64 bits = 0;
    bool isUnsigned = false;  ///< true only for values above the signed range
    friend bool operator==(const Integer&, const Integer&) = default;
  };

  PropertyValue();
  PropertyValue(bool value);
  PropertyValue(int value);
  PropertyValue(qint64 value);
  PropertyValue(quint64 value);
  PropertyValue(double value);
  PropertyValue(const QString& value);
  PropertyValue(QString&& value);
  PropertyValue(const char16_t* value);
  PropertyValue(QByteArray value);
  PropertyValue(QDateTime value);
  PropertyValue(Uid value);
  PropertyValue(PropertyArray value);
  PropertyValue(PropertyDictionary value);
  PropertyValue(const char*) = delete;  // is it text or data? say which
  PropertyValue(const PropertyValue&);
  PropertyValue(PropertyValue&&) noexcept;
  PropertyValue& operator=(const PropertyValue&);
  PropertyValue& operator=(PropertyValue&&) noexcept;
  ~PropertyValue();
  /// A real that passed through single precision, as many composition values do.
  [[nodiscard]] static PropertyValue fromFloat(float value);

  [[nodiscard]] Type type() const;
  [[nodiscard]] bool isNull() const { return type() == Type::Null; }
  /// Boolean, integer or real.
  [[nodiscard]] bool isNumeric() const;
  [[nodiscard]] bool isString() const { return type() == Type::String; }
  [[nodiscard]] bool isData() const { return type() == Type::Data; }
  [[nodiscard]] bool isArray() const { return type() == Type::Array; }
  [[nodiscard]] bool isDictionary() const { return type() == Type::Dictionary; }

  /// Lenient readers: any numeric type converts; other types give the fallback.
  [[nodiscard]] bool toBool(bool fallback = false) const;
  [[nodiscard]] qint64 toInteger(qint64 fallback = 0) const;  ///< truncates, saturates; NaN gives 0
  [[nodiscard]] double toDouble(double fallback = 0) const;
  /// Strict readers: another type gives an empty value.
  [[nodiscard]] QString toString() const;
  [[nodiscard]] QByteArray toData() const;
  [[nodiscard]] QDateTime toDate() const;
  [[nodiscard]] Uid toUid() const;
  [[nodiscard]] Integer toExactInteger() const;
  [[nodiscard]] const PropertyArray& array() const;
  [[nodiscard]] const PropertyDictionary& dictionary() const;
  /// Editable access; a value of another type first becomes an empty container.
  [[nodiscard]] PropertyArray& editArray();
  [[nodiscard]] PropertyDictionary& editDictionary();

  /// Exact, type included; only NaN counts as equal to itself, so that copies always compare equal.
  friend bool operator==(const PropertyValue& a, const PropertyValue& b);
  friend bool operator!=(const PropertyValue& a, const PropertyValue& b) { return !(a == b); }

 private:
  std::variant<std::monostate, bool, Integer, double, QString, QByteArray, QDateTime, Uid,
               PropertyArray, PropertyDictionary>
      m_value;  // in the order of Type
};

inline PropertyValue::PropertyValue() = default;
inline PropertyValue::PropertyValue(PropertyValue&&) noexcept = default;
inline PropertyValue& PropertyValue::operator=(PropertyValue&&) noexcept = default;
inline PropertyValue::~PropertyValue() = default;
inline PropertyValue::Type PropertyValue::type() const {
  return static_cast<Type>(m_value.index());
}

inline PropertyDictionary::PropertyDictionary() = default;
inline PropertyDictionary::PropertyDictionary(const PropertyDictionary&) = default;
inline PropertyDictionary::PropertyDictionary(PropertyDictionary&&) noexcept = default;
inline PropertyDictionary& PropertyDictionary::operator=(const PropertyDictionary&) = default;
inline PropertyDictionary& PropertyDictionary::operator=(PropertyDictionary&&) noexcept = default;
inline PropertyDictionary::~PropertyDictionary() = default;

}  // namespace foundation

Q_DECLARE_TYPEINFO(foundation::PropertyValue, Q_RELOCATABLE_TYPE);
