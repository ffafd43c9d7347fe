#include "store/ValueCodec.h"

#include <QBuffer>

namespace store {

using foundation::Color;
using foundation::PropertyArray;
using foundation::PropertyValue;

template <>
bool CodecOf<bool>::decode(const PropertyValue& stored) {
  return stored.toBool();
}
template <>
qint64 CodecOf<qint64>::decode(const PropertyValue& stored) {
  return stored.toInteger();
}
template <>
double CodecOf<double>::decode(const PropertyValue& stored) {
  return stored.toDouble();
}
template <>
QString CodecOf<QString>::decode(const PropertyValue& stored) {
  return stored.toString();
}
template <>
QByteArray CodecOf<QByteArray>::decode(const PropertyValue& stored) {
  return stored.toData();
}

PropertyValue CodecOf<QStringList>::encode(const QStringList& value) {
  PropertyArray texts;
  for (const QString& text : value) texts.append(text);
  return texts;
}

QStringList CodecOf<QStringList>::decode(const PropertyValue& stored) {
  QStringList texts;
  for (const PropertyValue& text : stored.array()) texts.append(text.toString());
  return texts;
}

PropertyValue CodecOf<Color>::encode(const Color& value) {
  return PropertyArray{value.red, value.green, value.blue, value.alpha};
}

Color CodecOf<Color>::decode(const PropertyValue& stored) {
  const PropertyArray& parts = stored.array();
  if (parts.size() != 4) return {};
  return {parts[0].toDouble(), parts[1].toDouble(), parts[2].toDouble(), parts[3].toDouble()};
}

PropertyValue CodecOf<QImage>::encode(const QImage& value) {
  QByteArray bytes;
  if (!value.isNull()) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    value.save(&buffer, "PNG");
  }
  return bytes;
}

QImage CodecOf<QImage>::decode(const PropertyValue& stored) {
  return QImage::fromData(stored.toData(), "PNG");
}

}  // namespace store
