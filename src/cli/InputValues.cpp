#include "cli/InputValues.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

#include "runtime/StructureMember.h"

namespace cli {

using foundation::failure;
using foundation::Result;
using runtime::PortType;
using runtime::Value;

namespace {

Result<Value> wrong(const runtime::PortAttributes& port, const QString& wanted,
                    const QString& given) {
  return failure(QStringLiteral("'%1' takes %2, not '%3'").arg(port.key, wanted, given));
}

Result<Value> number(const QJsonValue& json, const runtime::PortAttributes& port) {
  if (json.isDouble()) return Value(json.toDouble());
  if (json.isBool()) return Value(json.toBool() ? 1.0 : 0.0);
  bool ok = false;
  const double value = json.toString().toDouble(&ok);
  if (!ok || !std::isfinite(value))
    return wrong(port, QStringLiteral("a number"), json.toVariant().toString());
  return Value(value);
}

Result<Value> index(const QJsonValue& json, const runtime::PortAttributes& port) {
  if (json.isString()) {
    const qsizetype item = port.menu.indexOf(json.toString());
    if (item >= 0) return Value::index(static_cast<quint64>(item));
  }
  const Result<Value> value = number(json, port);
  if (!value || value->toNumber() < 0 || value->toNumber() != std::floor(value->toNumber())) {
    const QString menu = port.menu.isEmpty()
                             ? QString()
                             : QStringLiteral(" or one of ") + port.menu.join(QStringLiteral(", "));
    return wrong(port, QStringLiteral("a whole number") + menu, json.toVariant().toString());
  }
  return value->converted(PortType::Index);
}

Result<Value> boolean(const QJsonValue& json, const runtime::PortAttributes& port) {
  if (json.isBool()) return Value(json.toBool());
  const QString text = json.isDouble() ? QString::number(json.toDouble()) : json.toString();
  static const QStringList yes{QStringLiteral("1"), QStringLiteral("true"), QStringLiteral("yes"),
                               QStringLiteral("on")};
  static const QStringList no{QStringLiteral("0"), QStringLiteral("false"), QStringLiteral("no"),
                              QStringLiteral("off")};
  if (yes.contains(text, Qt::CaseInsensitive)) return Value(true);
  if (no.contains(text, Qt::CaseInsensitive)) return Value(false);
  return wrong(port, QStringLiteral("true or false"), text);
}

Result<Value> color(const QJsonValue& json, const runtime::PortAttributes& port) {
  const QString text = json.toString();
  QString digits = text;
  digits.remove(QLatin1Char('#'));
  bool ok = false;
  const quint32 rgba = digits.toUInt(&ok, 16);
  if (!ok || !text.startsWith(QLatin1Char('#')) || (digits.size() != 6 && digits.size() != 8))
    return wrong(port, QStringLiteral("a colour such as #1A58C4 or #1A58C480"), text);
  const quint32 v = digits.size() == 6 ? (rgba << 8) | 0xffU : rgba;
  const auto part = [v](int shift) { return ((v >> shift) & 0xffU) / 255.0; };
  return Value(foundation::Color{part(24), part(16), part(8), part(0)});
}

Result<Value> picture(const QString& name, const QString& folder) {
  if (name.isEmpty()) return Value();
  const QString path = QDir(folder).filePath(name);
  QImageReader reader(path);
  const QImage image = reader.read();
  if (image.isNull())
    return failure(QStringLiteral("cannot be read as a picture: %1").arg(reader.errorString()),
                   path);
  return Value(runtime::Image::fromQImage(image));
}

Value structure(const QJsonValue& json, int depth = 0) {
  if (json.isDouble()) return json.toDouble();
  if (json.isBool()) return json.toBool();
  if (json.isString()) return json.toString();
  runtime::Structure::Members members;
  if (depth < 32) {
    const QJsonArray array = json.toArray();
    for (const QJsonValue& entry : array)
      members.push_back({QString(), structure(entry, depth + 1)});
    const QJsonObject object = json.toObject();
    for (auto it = object.begin(); it != object.end(); ++it)
      members.push_back({it.key(), structure(it.value(), depth + 1)});
  }
  return runtime::Structure(std::move(members));
}

Result<void> assignTo(const QString& key, const QJsonValue& json, const QString& folder,
                      runtime::CompositionRenderer& renderer) {
  const auto port = renderer.inputAttributes(key);
  if (!port)
    return failure(QStringLiteral("there is no input '%1'; the file has: %2")
                       .arg(key, renderer.inputKeys().join(QStringLiteral(", "))));
  const Result<Value> value = InputValues::fromJson(json, *port, folder);
  if (!value) return tl::unexpected(value.error());
  renderer.setValueForInputKey(*value, key);
  return {};
}

}  // namespace

Result<Value> InputValues::fromJson(const QJsonValue& json, const runtime::PortAttributes& port,
                                    const QString& folder) {
  switch (port.type) {
    case PortType::Number:
      return number(json, port);
    case PortType::Index:
      return index(json, port);
    case PortType::Boolean:
      return boolean(json, port);
    case PortType::Color:
      return color(json, port);
    case PortType::Image:
      return picture(json.toString(), folder);
    case PortType::String:
      return Value(json.toVariant().toString());
    default:
      return structure(json);
  }
}

Result<void> InputValues::assign(const QString& assignment,
                                 runtime::CompositionRenderer& renderer) {
  const qsizetype equals = assignment.indexOf(QLatin1Char('='));
  if (equals < 1) return failure(QStringLiteral("--set takes KEY=VALUE, not '%1'").arg(assignment));
  return assignTo(assignment.left(equals), assignment.mid(equals + 1), QDir::currentPath(),
                  renderer);
}

Result<void> InputValues::assignFile(const QString& path, runtime::CompositionRenderer& renderer) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return failure(QStringLiteral("cannot be read: %1").arg(file.errorString()), path);
  QJsonParseError parse;
  const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parse);
  if (!document.isObject())
    return failure(parse.error == QJsonParseError::NoError
                       ? QStringLiteral("is not a JSON object of values")
                       : parse.errorString(),
                   path, QStringLiteral("byte %1").arg(parse.offset));
  const QJsonObject values = document.object();
  for (auto it = values.begin(); it != values.end(); ++it) {
    const auto ok = assignTo(it.key(), it.value(), QFileInfo(path).absolutePath(), renderer);
    if (!ok)
      return ok.error().file.isEmpty() ? failure(ok.error().message, path)
                                       : tl::unexpected(ok.error());
  }
  return {};
}

}  // namespace cli
