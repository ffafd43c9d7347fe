#pragma once

#include <QImage>
#include <QStringList>
#include <QVariant>

#include "foundation/Color.h"
#include "foundation/PropertyValue.h"

namespace store {

/// How values of one type are kept outside memory: as property-list values. Decoding a value of
/// another shape gives the type's default.
struct ValueCodec {
  foundation::PropertyValue (*encode)(const QVariant& value) = nullptr;
  QVariant (*decode)(const foundation::PropertyValue& stored) = nullptr;
};

/// The codec of a type. Types of other layers specialise `encode` and `decode` for themselves.
template <typename T>
struct CodecOf {
  [[nodiscard]] static foundation::PropertyValue encode(const T& value) {
    return foundation::PropertyValue(value);
  }
  [[nodiscard]] static T decode(const foundation::PropertyValue& stored);
};

template <>
bool CodecOf<bool>::decode(const foundation::PropertyValue& stored);
template <>
qint64 CodecOf<qint64>::decode(const foundation::PropertyValue& stored);
template <>
double CodecOf<double>::decode(const foundation::PropertyValue& stored);
template <>
QString CodecOf<QString>::decode(const foundation::PropertyValue& stored);
template <>
QByteArray CodecOf<QByteArray>::decode(const foundation::PropertyValue& stored);

template <>
struct CodecOf<QStringList> {
  [[nodiscard]] static foundation::PropertyValue encode(const QStringList& value);
  [[nodiscard]] static QStringList decode(const foundation::PropertyValue& stored);
};
/// Four numbers: red, green, blue, alpha.
template <>
struct CodecOf<foundation::Color> {
  [[nodiscard]] static foundation::PropertyValue encode(const foundation::Color& value);
  [[nodiscard]] static foundation::Color decode(const foundation::PropertyValue& stored);
};
/// The bytes of a PNG file; no bytes for a null image.
template <>
struct CodecOf<QImage> {
  [[nodiscard]] static foundation::PropertyValue encode(const QImage& value);
  [[nodiscard]] static QImage decode(const foundation::PropertyValue& stored);
};

/// The codec of a type for values that are held as QVariant.
template <typename T>
[[nodiscard]] const ValueCodec& codecOf() {
  static const ValueCodec codec{
      [](const QVariant& value) {
        return CodecOf<T>::encode(*static_cast<const T*>(value.constData()));
      },
      [](const foundation::PropertyValue& stored) {
        return QVariant::fromValue(CodecOf<T>::decode(stored));
      }};
  return codec;
}

}  // namespace store
