#include "playout/InputValues.h"

#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <cmath>

#include "playout/AcceptedValues.h"
#include "runtime/StructureMember.h"

namespace playout {

using runtime::PortType;
using runtime::Value;

namespace {

using Read = tl::expected<Value, ValueFailure>;

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

tl::unexpected<ValueFailure> wrong(const runtime::PortAttributes& port, const QString& wanted,
                                   const QJsonValue& given) {
  return ValueFailure::wrong(
      QStringLiteral("'%1' takes %2, not '%3'").arg(port.key, wanted, shown(given)));
}

Read number(const QJsonValue& json, const runtime::PortAttributes& port) {
  const AcceptedValues accepted(port);
  if (json.isDouble() && accepted.isWithinLimits(json.toDouble())) return Value(json.toDouble());
  return wrong(port, QStringLiteral("a number") + accepted.limitsText(), json);
}

Read index(const QJsonValue& json, const runtime::PortAttributes& port) {
  const AcceptedValues accepted(port);
  const double value = json.toDouble();
  if (json.isDouble() && value == std::floor(value) && accepted.isWithinLimits(value))
    return Value(value).converted(PortType::Index);
  const QStringList titles = accepted.titles();
  const qsizetype item = json.isString() ? titles.indexOf(json.toString()) : -1;
  if (item >= 0) return Value::index(static_cast<quint64>(item));
  QString wanted = QStringLiteral("a whole number") + accepted.limitsText();
  if (!titles.isEmpty())
    wanted += QStringLiteral(" or one of ") + titles.join(QStringLiteral(", "));
  return wrong(port, wanted, json);
}

Read boolean(const QJsonValue& json, const runtime::PortAttributes& port) {
  if (json.isBool()) return Value(json.toBool());
  return wrong(port, QStringLiteral("true or false"), json);
}

Read color(const QJsonValue& json, const runtime::PortAttributes& port) {
  static const QRegularExpression pattern(AcceptedValues::colorPattern(),
                                          QRegularExpression::DontCaptureOption);
  const QString text = json.toString();
  // The pattern's end would let a line break pass.
  if (!pattern.match(text).hasMatch() || text.endsWith(QLatin1Char('\n')))
    return wrong(port, QStringLiteral("a colour such as #1A58C4 or #1A58C480"), json);
  const quint32 rgba = QStringView(text).mid(1).toUInt(nullptr, 16);
  const quint32 v = text.size() == 7 ? (rgba << 8) | 0xffU : rgba;
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
    return ValueFailure::unreadable(
        QStringLiteral("cannot be read as a picture: %1").arg(reader.errorString()), path);
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
  if (!json.isArray() && !json.isObject())
    return wrong(port, QStringLiteral("a list or an object"), json);
  return structure(json);
}

}  // namespace

tl::expected<Value, ValueFailure> InputValues::fromJson(const QJsonValue& json,
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
  return ValueFailure::wrong(QStringLiteral("'%1' takes no value from here").arg(port.key));
}

QJsonValue InputValues::jsonFromText(const QString& text, const runtime::PortAttributes& port) {
  bool isNumber = false;
  const double number = text.toDouble(&isNumber);
  switch (port.type) {
    case PortType::Index:
      if (port.menu.contains(text)) return text;
      [[fallthrough]];
    case PortType::Number:
      return isNumber && std::isfinite(number) ? QJsonValue(number) : QJsonValue(text);
    case PortType::Boolean:
      for (const char* yes : {"1", "true", "yes", "on"})
        if (text.compare(QLatin1String(yes), Qt::CaseInsensitive) == 0) return true;
      for (const char* no : {"0", "false", "no", "off"})
        if (text.compare(QLatin1String(no), Qt::CaseInsensitive) == 0) return false;
      return text;
    case PortType::Structure: {
      const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
      if (document.isArray()) return document.array();
      return document.isObject() ? QJsonValue(document.object()) : QJsonValue(text);
    }
    default:
      return text;
  }
}

tl::expected<Value, ValueFailure> InputValues::fromText(const QString& text,
                                                        const runtime::PortAttributes& port,
                                                        const QString& folder) {
  return fromJson(jsonFromText(text, port), port, folder);
}

std::vector<runtime::PortAttributes> InputValues::inputsOf(
    const runtime::CompositionRenderer& renderer) {
  std::vector<runtime::PortAttributes> inputs;
  QStringList keys = renderer.inputKeys();
  keys.removeDuplicates();
  for (const QString& key : std::as_const(keys))
    if (const auto input = renderer.inputAttributes(key)) inputs.push_back(*input);
  return inputs;
}

tl::expected<runtime::PortAttributes, ValueFailure> InputValues::inputNamed(
    const QString& key, const runtime::CompositionRenderer& renderer) {
  if (const auto port = renderer.inputAttributes(key)) return *port;
  return ValueFailure::wrong(QStringLiteral("there is no input '%1'; the file has: %2")
                                 .arg(key, renderer.inputKeys().join(QStringLiteral(", "))));
}

std::vector<InputValue> InputValues::fittingOf(const QJsonObject& object,
                                               const runtime::CompositionRenderer& renderer,
                                               const QString& folder, QStringList& leftOut) {
  std::vector<InputValue> values;
  for (auto it = object.begin(); it != object.end(); ++it) {
    const auto port = renderer.inputAttributes(it.key());
    const Read value =
        port ? fromJson(it.value(), *port, folder)
             : ValueFailure::wrong(QStringLiteral("'%1' is not published any more").arg(it.key()));
    if (value)
      values.push_back({it.key(), *value});
    else
      leftOut.append(value.error().error.text());
  }
  return values;
}

tl::expected<std::vector<InputValue>, ValueFailure> InputValues::fromObject(
    const QJsonObject& object, const runtime::CompositionRenderer& renderer,
    const QString& folder) {
  std::vector<InputValue> values;
  for (auto it = object.begin(); it != object.end(); ++it) {
    const Read value = inputNamed(it.key(), renderer).and_then([&](const auto& port) {
      return fromJson(it.value(), port, folder);
    });
    if (!value) return tl::unexpected(value.error());
    values.push_back({it.key(), *value});
  }
  return values;
}

tl::expected<QJsonObject, ValueFailure> InputValues::objectFromFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return ValueFailure::unreadable(QStringLiteral("cannot be read: %1").arg(file.errorString()),
                                    path);
  QJsonParseError parse;
  const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parse);
  if (parse.error != QJsonParseError::NoError)
    return ValueFailure::unreadable(parse.errorString(), path,
                                    QStringLiteral("byte %1").arg(parse.offset));
  if (!document.isObject())
    return ValueFailure::unreadable(QStringLiteral("is not a JSON object of values"), path);
  return document.object();
}

}  // namespace playout
