#include "playout/ValueJson.h"

#include <QJsonArray>
#include <QJsonObject>
#include <cmath>

#include "runtime/StructureMember.h"

namespace playout {

using runtime::PortType;
using runtime::Value;

namespace {

QJsonValue numberJson(double number) {
  return std::isfinite(number) ? QJsonValue(number) : QJsonValue(QJsonValue::Undefined);
}

QJsonValue structureJson(const runtime::Structure& structure) {
  QJsonArray list;
  QJsonObject keyed;
  for (const runtime::StructureMember& member : structure.members()) {
    const QJsonValue value = ValueJson::of(member.value, PortType::Virtual);
    if (structure.isKeyed())
      keyed.insert(member.key, value.isUndefined() ? QJsonValue() : value);
    else
      list.append(value.isUndefined() ? QJsonValue() : value);
  }
  return structure.isKeyed() ? QJsonValue(keyed) : QJsonValue(list);
}

}  // namespace

QJsonValue ValueJson::of(const Value& value, PortType type) {
  if (value.isEmpty()) return QJsonValue::Undefined;
  switch (type == PortType::Virtual ? value.type() : type) {
    case PortType::Boolean:
      return value.toBoolean();
    case PortType::Number:
    case PortType::Index:
      return numberJson(value.toNumber());
    case PortType::String:
      return value.toString();
    case PortType::Color:
      return colorText(value.toColor());
    case PortType::Structure:
      return structureJson(value.toStructure());
    default:
      return QJsonValue::Undefined;
  }
}

QString ValueJson::colorText(const foundation::Color& color) {
  const QColor c = color.toQColor();
  return QStringLiteral("#%1%2").arg(
      c.name().mid(1).toUpper(),
      QStringLiteral("%1").arg(c.alpha(), 2, 16, QLatin1Char('0')).toUpper());
}

}  // namespace playout
