#include "preview/fields/FieldDescription.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include "playout/AcceptedValues.h"
#include "playout/ValueJson.h"

namespace preview {

using runtime::PortAttributes;
using runtime::PortType;

namespace {

constexpr qsizetype longest = 60;

QString number(double value) {
  return QLocale().toString(value, 'g', 8);
}

/// Where the control says by itself what is to be entered.
bool showsItsType(PortType type) {
  return type == PortType::String || type == PortType::Boolean || type == PortType::Color ||
         type == PortType::Image;
}

QString onOneLine(QString text) {
  text.replace(u'\n', QStringLiteral(" ⏎ "));
  return text.size() > longest ? text.left(longest) + QStringLiteral("…") : text;
}

}  // namespace

QString FieldDescription::typeName(const PortAttributes& port) {
  switch (port.type) {
    case PortType::Boolean:
      return tr("Switch");
    case PortType::Index:
      return port.menu.isEmpty() ? tr("Whole number") : tr("Choice");
    case PortType::Number:
      return tr("Number");
    case PortType::String:
      return tr("Text");
    case PortType::Color:
      return tr("Color");
    case PortType::Image:
      return tr("Picture");
    case PortType::Structure:
      return tr("Structure");
    default:
      return tr("Any value");
  }
}

QString FieldDescription::limits(const PortAttributes& port) {
  if (port.type != PortType::Number && port.type != PortType::Index) return {};
  if (!port.menu.isEmpty()) return {};
  const playout::AcceptedValues accepted(port);
  const auto lowest = accepted.lowest();
  const auto highest = accepted.highest();
  if (lowest && highest) return tr("%1 to %2").arg(number(*lowest), number(*highest));
  if (lowest) return tr("from %1").arg(number(*lowest));
  return highest ? tr("up to %1").arg(number(*highest)) : QString();
}

QString FieldDescription::wanted(const PortAttributes& port) {
  const QString within = limits(port);
  if (port.type == PortType::Index)
    return within.isEmpty() ? tr("A whole number is needed.")
                            : tr("A whole number is needed: %1.").arg(within);
  return within.isEmpty() ? tr("A number is needed.") : tr("A number is needed: %1.").arg(within);
}

QString FieldDescription::valueText(const runtime::Value& value, const PortAttributes& port) {
  const PortType type = port.type == PortType::Virtual ? value.type() : port.type;
  switch (type) {
    case PortType::Boolean:
      return value.toBoolean() ? tr("on") : tr("off");
    case PortType::Number:
      return number(value.toNumber());
    case PortType::Index: {
      const auto index = static_cast<qsizetype>(value.toIndex());
      return index < port.menu.size() ? port.menu[index] : number(value.toNumber());
    }
    case PortType::Color:
      return playout::ValueJson::colorText(value.toColor());
    case PortType::Image: {
      const QSize size = value.toImage().size();
      return size.isEmpty() ? tr("none") : tr("%1 × %2").arg(size.width()).arg(size.height());
    }
    case PortType::Structure: {
      const QJsonValue json = playout::ValueJson::of(value, type);
      const QJsonDocument document =
          json.isArray() ? QJsonDocument(json.toArray()) : QJsonDocument(json.toObject());
      return onOneLine(QString::fromUtf8(document.toJson(QJsonDocument::Compact)));
    }
    default:
      return onOneLine(value.toString());
  }
}

QString FieldDescription::details(const PortAttributes& port) {
  QStringList parts{QString()};
  if (!showsItsType(port.type)) parts += typeName(port);
  if (const QString within = limits(port); !within.isEmpty()) parts += within;
  // Kept together whatever direction it is written in.
  const QString usual = valueText(port.defaultValue, port);
  if (!usual.isEmpty()) parts += tr("default %1").arg(QChar(0x2068) + usual + QChar(0x2069));
  return parts.join(QStringLiteral(" · "));
}

QString FieldDescription::toolTip(const PortAttributes& port) {
  QStringList lines{port.label.isEmpty() ? port.key : port.label, tr("Key: %1").arg(port.key),
                    tr("Type: %1").arg(typeName(port))};
  if (const QString within = limits(port); !within.isEmpty()) lines += tr("Limits: %1").arg(within);
  if (!port.menu.isEmpty())
    lines += tr("Choices: %1").arg(onOneLine(port.menu.join(QStringLiteral(", "))));
  lines += tr("Default: %1").arg(valueText(port.defaultValue, port));
  return lines.join(u'\n');
}

}  // namespace preview
