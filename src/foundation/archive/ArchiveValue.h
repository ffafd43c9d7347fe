#pragma once

#include <QByteArray>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <initializer_list>
#include <memory>
#include <utility>
#include <variant>

#include "foundation/Color.h"

namespace foundation {

class ArchiveValue;

/// An image as archives hold it: the bytes of a picture file (TIFF, PNG, ...).
struct ArchiveImage {
  QByteArray file;
  friend bool operator==(const ArchiveImage&, const ArchiveImage&) = default;
};

/// Keys and values in the order of the archive. Keys that are not strings do not appear.
class ArchiveDictionary {
 public:
  using Entry = std::pair<QString, ArchiveValue>;
  ArchiveDictionary();
  ArchiveDictionary(std::initializer_list<Entry> entries);
  explicit ArchiveDictionary(QList<Entry> entries);
  ArchiveDictionary(const ArchiveDictionary&);
  ArchiveDictionary(ArchiveDictionary&&) noexcept;
  ArchiveDictionary& operator=(const ArchiveDictionary&);
  ArchiveDictionary& operator=(ArchiveDictionary&&) noexcept;
  ~ArchiveDictionary();

  [[nodiscard]] const QList<Entry>& entries() const { return m_entries; }
  /// The value under the key, or a nil value.
  [[nodiscard]] const ArchiveValue& value(QStringView key) const;
  void insert(const QString& key, const ArchiveValue& value);  ///< replaces in place or appends
  friend bool operator==(const ArchiveDictionary&, const ArchiveDictionary&);

 private:
  QList<Entry> m_entries;
};

using ArchiveArray = QList<ArchiveValue>;

/// An object of a class that has no form of its own here: its fields by name (keyed archives) or,
/// for non-keyed archives, whose fields have no names, only the class.
struct ArchiveObject {
  QString className;
  ArchiveDictionary fields;
  friend bool operator==(const ArchiveObject&, const ArchiveObject&) = default;
};

/// What an archived object means, the same for keyed and non-keyed archives.
class ArchiveValue {
 public:
  using Storage =
      std::variant<std::monostate, bool, qint64, double, QString, QByteArray, QPointF, QSizeF,
                   QRectF, Color, ArchiveImage, ArchiveArray, ArchiveDictionary, ArchiveObject>;
  ArchiveValue();
  ArchiveValue(bool value);
  ArchiveValue(int value);
  ArchiveValue(qint64 value);
  ArchiveValue(double value);
  ArchiveValue(const QString& value);
  ArchiveValue(const QByteArray& value);
  ArchiveValue(QPointF value);
  ArchiveValue(QSizeF value);
  ArchiveValue(QRectF value);
  ArchiveValue(Color value);
  ArchiveValue(ArchiveImage value);
  ArchiveValue(ArchiveArray value);
  ArchiveValue(ArchiveDictionary value);
  ArchiveValue(ArchiveObject value);
  ArchiveValue(const char*) = delete;
  ArchiveValue(const ArchiveValue&);
  ArchiveValue(ArchiveValue&&) noexcept;
  ArchiveValue& operator=(const ArchiveValue&);
  ArchiveValue& operator=(ArchiveValue&&) noexcept;
  ~ArchiveValue();

  [[nodiscard]] const Storage& storage() const { return m_storage; }
  [[nodiscard]] bool isNil() const { return m_storage.index() == 0; }
  /// The value when it is of this type, or null.
  template <typename T>
  [[nodiscard]] const T* as() const {
    return std::get_if<T>(&m_storage);
  }
  /// Strict readers: another type gives an empty value. Numbers convert into each other.
  [[nodiscard]] QString toString() const;
  [[nodiscard]] double toDouble(double fallback = 0) const;
  [[nodiscard]] qint64 toInteger(qint64 fallback = 0) const;
  [[nodiscard]] bool toBool(bool fallback = false) const;
  [[nodiscard]] const ArchiveArray& array() const;
  [[nodiscard]] const ArchiveDictionary& dictionary() const;
  friend bool operator==(const ArchiveValue&, const ArchiveValue&);

 private:
  Storage m_storage;
};

}  // namespace foundation
