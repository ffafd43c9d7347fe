#include "components/SourceValue.h"

#include <QJsonArray>
#include <QJsonObject>
#include <cmath>

namespace components {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

std::optional<InputType> InputType::named(const QString& word) {
  static const QHash<QString, InputType> types = {
      {QStringLiteral("number"), {Kind::Number, QStringLiteral("QCNumberPort")}},
      {QStringLiteral("index"), {Kind::Index, QStringLiteral("QCIndexPort")}},
      {QStringLiteral("boolean"), {Kind::Boolean, QStringLiteral("QCBooleanPort")}},
      {QStringLiteral("string"), {Kind::String, QStringLiteral("QCStringPort")}},
      {QStringLiteral("color"), {Kind::Color, QStringLiteral("QCColorPort")}},
      {QStringLiteral("image"), {Kind::Image, QStringLiteral("QCGLImagePort")}},
      {QStringLiteral("structure"), {Kind::Structure, QStringLiteral("QCStructurePort")}},
      {QStringLiteral("virtual"), {Kind::Virtual, QStringLiteral("QCVirtualPort")}}};
  const auto found = types.constFind(word);
  return found == types.constEnd() ? std::nullopt : std::optional(*found);
}

std::optional<PropertyValue> InputType::value(const QJsonValue& json) const {
  switch (kind) {
    case Kind::Number:
      if (json.isDouble()) return PropertyValue(json.toDouble());
      return std::nullopt;
    case Kind::Index:
      if (json.isDouble() && json.toDouble() >= 0) return PropertyValue(json.toInteger());
      return std::nullopt;
    case Kind::Boolean:
      if (json.isBool()) return PropertyValue(json.toBool());
      return std::nullopt;
    case Kind::String:
      if (json.isString()) return PropertyValue(json.toString());
      return std::nullopt;
    case Kind::Color:
      return colorValue(json.toString());
    default:
      return std::nullopt;
  }
}

std::optional<PropertyValue> colorValue(const QString& text) {
  if (!text.startsWith(QLatin1Char('#')) || (text.size() != 7 && text.size() != 9))
    return std::nullopt;
  bool ok = false;
  const quint32 bits = text.mid(1).toUInt(&ok, 16);
  if (!ok) return std::nullopt;
  const quint32 rgba = text.size() == 7 ? bits << 8 | 0xFF : bits;
  const auto part = [rgba](int shift) { return PropertyValue((rgba >> shift & 0xFF) / 255.0); };
  return PropertyValue(PropertyDictionary{{QStringLiteral("red"), part(24)},
                                          {QStringLiteral("green"), part(16)},
                                          {QStringLiteral("blue"), part(8)},
                                          {QStringLiteral("alpha"), part(0)}});
}

PropertyValue plainValue(const QJsonValue& json) {
  if (json.isBool()) return json.toBool();
  if (json.isString()) return json.toString();
  if (json.isDouble()) {
    const double number = json.toDouble();
    if (number == std::floor(number) && std::fabs(number) < 1e15)
      return PropertyValue(static_cast<qint64>(number));
    return number;
  }
  if (json.isArray()) {
    PropertyArray array;
    const QJsonArray elements = json.toArray();
    for (const QJsonValue& element : elements) array.append(plainValue(element));
    return array;
  }
  if (!json.isObject()) return {};
  const QJsonObject object = json.toObject();
  if (object.size() == 1 && object.contains(QLatin1String("color"))) {
    const auto color = colorValue(object.value(QLatin1String("color")).toString());
    return color ? *color : PropertyValue();
  }
  PropertyDictionary dictionary;
  for (auto it = object.begin(); it != object.end(); ++it)
    dictionary.insert(it.key(), plainValue(it.value()));
  return dictionary;
}

}  // namespace components
