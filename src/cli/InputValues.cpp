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

using runtime::PortType;
using runtime::Value;

namespace {

using Read = tl::expected<Value, LoadFailure>;

tl::unexpected<LoadFailure> failed(ExitStatus status, const QString& message,
                                   const QString& file = {}, const QString& detail = {}) {
  return tl::unexpected(LoadFailure{status, {message, file, detail}});
}

/// The value as its writer would recognise it.
QString shown(const QJsonValue& json) {
  const QString text =
      json.isString()
          ? json.toString()
          : QString::fromUtf8(QJsonDocument(QJsonArray{json}).toJson(QJsonDocument::Compact))
                .chopped(1)
                .mid(1);
  return text.size() > 60 ? text.left(60) + QStringLiteral("…") : text;
}

tl::unexpected<LoadFailure> wrong(const runtime::PortAttributes& port, const QString& wanted,
                                  const QJsonValue& given) {
  return failed(ExitStatus::Usage,
                QStringLiteral("'%1' takes %2, not '%3'").arg(port.key, wanted, shown(given)));
}

Read number(const QJsonValue& json, const runtime::PortAttributes& port) {
  if (json.isDouble()) return Value(json.toDouble());
  bool ok = false;
  const double value = json.toString().toDouble(&ok);
  if (!ok || !std::isfinite(value)) return wrong(port, QStringLiteral("a number"), json);
  return Value(value);
}

Read index(const QJsonValue& json, const runtime::PortAttributes& port) {
  if (json.isString()) {
    const qsizetype item = port.menu.indexOf(json.toString());
    if (item >= 0) return Value::index(static_cast<quint64>(item));
  }
  const Read value = number(json, port);
  if (!value || value->toNumber() < 0 || value->toNumber() != std::floor(value->toNumber())) {
    const QString menu = port.menu.isEmpty()
                             ? QString()
                             : QStringLiteral(" or one of ") + port.menu.join(QStringLiteral(", "));
    return wrong(port, QStringLiteral("a whole number") + menu, json);
  }
  return value->converted(PortType::Index);
}

Read boolean(const QJsonValue& json, const runtime::PortAttributes& port) {
  if (json.isBool()) return Value(json.toBool());
  const QString text = json.isDouble() ? QString::number(json.toDouble()) : json.toString();
  static const QStringList yes{QStringLiteral("1"), QStringLiteral("true"), QStringLiteral("yes"),
                               QStringLiteral("on")};
  static const QStringList no{QStringLiteral("0"), QStringLiteral("false"), QStringLiteral("no"),
                              QStringLiteral("off")};
  if (yes.contains(text, Qt::CaseInsensitive)) return Value(true);
  if (no.contains(text, Qt::CaseInsensitive)) return Value(false);
  return wrong(port, QStringLiteral("true or false"), json);
}

Read color(const QJsonValue& json, const runtime::PortAttributes& port) {
  const QString text = json.toString();
  const QString digits = text.mid(1);
  bool ok = false;
  const quint32 rgba = digits.toUInt(&ok, 16);
  if (!ok || !text.startsWith(QLatin1Char('#')) || (digits.size() != 6 && digits.size() != 8))
    return wrong(port, QStringLiteral("a colour such as #1A58C4 or #1A58C480"), json);
  const quint32 v = digits.size() == 6 ? (rgba << 8) | 0xffU : rgba;
  const auto part = [v](int shift) { return ((v >> shift) & 0xffU) / 255.0; };
  return Value(foundation::Color{part(24), part(16), part(8), part(0)});
}

/// A number stands for its text: a score need not be put in quotation marks.
Read text(const QJsonValue& json, const runtime::PortAttributes& port) {
  if (json.isString()) return Value(json.toString());
  if (json.isDouble()) return Value(runtime::numberText(json.toDouble()));
  return wrong(port, QStringLiteral("a text"), json);
}

Read picture(const QJsonValue& json, const runtime::PortAttributes& port, const QString& folder) {
  if (!json.isString()) return wrong(port, QStringLiteral("the name of a picture file"), json);
  if (json.toString().isEmpty()) return Value();
  const QString path = QDir(folder).filePath(json.toString());
  QImageReader reader(path);
  const QImage image = reader.read();
  if (image.isNull())
    return failed(ExitStatus::InputUnreadable,
                  QStringLiteral("cannot be read as a picture: %1").arg(reader.errorString()),
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

Read structureFrom(const QJsonValue& json, const runtime::PortAttributes& port) {
  QJsonValue value = json;
  if (json.isString()) {  // what the command line gives
    const QJsonDocument document = QJsonDocument::fromJson(json.toString().toUtf8());
    if (document.isArray()) value = document.array();
    if (document.isObject()) value = document.object();
  }
  if (!value.isArray() && !value.isObject())
    return wrong(port, QStringLiteral("a list or an object"), json);
  return structure(value);
}

InputValues::Done assignTo(const QString& key, const QJsonValue& json, const QString& folder,
                           runtime::CompositionRenderer& renderer) {
  const auto port = renderer.inputAttributes(key);
  if (!port)
    return failed(ExitStatus::Usage,
                  QStringLiteral("there is no input '%1'; the file has: %2")
                      .arg(key, renderer.inputKeys().join(QStringLiteral(", "))));
  const Read value = InputValues::fromJson(json, *port, folder);
  if (!value) return tl::unexpected(value.error());
  renderer.setValueForInputKey(*value, key);
  return {};
}

tl::expected<QJsonObject, LoadFailure> readObject(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return failed(ExitStatus::InputUnreadable,
                  QStringLiteral("cannot be read: %1").arg(file.errorString()), path);
  QJsonParseError parse;
  const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parse);
  if (parse.error != QJsonParseError::NoError)
    return failed(ExitStatus::InputUnreadable, parse.errorString(), path,
                  QStringLiteral("byte %1").arg(parse.offset));
  if (!document.isObject())
    return failed(ExitStatus::InputUnreadable, QStringLiteral("is not a JSON object of values"),
                  path);
  return document.object();
}

}  // namespace

tl::expected<Value, LoadFailure> InputValues::fromJson(const QJsonValue& json,
                                                       const runtime::PortAttributes& port,
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
      return picture(json, port, folder);
    case PortType::String:
      return text(json, port);
    case PortType::Structure:
      return structureFrom(json, port);
    case PortType::Virtual:
      if (json.isNull()) return Value();
      return structure(json);
    case PortType::Mesh:
    case PortType::Interaction:
      break;
  }
  return failed(ExitStatus::Usage, QStringLiteral("'%1' takes no value from here").arg(port.key));
}

InputValues::Done InputValues::assign(const QString& assignment,
                                      runtime::CompositionRenderer& renderer) {
  const qsizetype equals = assignment.indexOf(QLatin1Char('='));
  if (equals < 1)
    return failed(ExitStatus::Usage,
                  QStringLiteral("--set takes KEY=VALUE, not '%1'").arg(assignment));
  return assignTo(assignment.left(equals), assignment.mid(equals + 1), QDir::currentPath(),
                  renderer);
}

InputValues::Done InputValues::assignFile(const QString& path,
                                          runtime::CompositionRenderer& renderer) {
  const auto values = readObject(path);
  if (!values) return tl::unexpected(values.error());
  const QString folder = QFileInfo(path).absolutePath();
  for (auto it = values->begin(); it != values->end(); ++it)
    if (auto done = assignTo(it.key(), it.value(), folder, renderer); !done) {
      if (done.error().error.file.isEmpty()) done.error().error.file = path;
      return done;
    }
  return {};
}

}  // namespace cli
