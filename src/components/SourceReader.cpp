#include "components/SourceReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

namespace components {

using foundation::failure;
using foundation::Result;

namespace {

constexpr int deepestInclude = 16;
constexpr qint64 largestFile = 4 << 20;

Result<QJsonValue> resolved(const QJsonValue& value, const QString& file, int depth);

Result<QJsonValue> valueFromFile(const QString& path, int depth) {
  if (depth > deepestInclude) return failure(QStringLiteral("includes go in circles"), path);
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return failure(file.errorString(), path);
  if (file.size() > largestFile) return failure(QStringLiteral("the source is too large"), path);
  const QByteArray text = SourceReader::withoutComments(file.readAll());
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(text, &error);
  if (error.error != QJsonParseError::NoError)
    return failure(error.errorString(), path,
                   QStringLiteral("line %1").arg(text.left(error.offset).count('\n') + 1));
  const QJsonValue value = document.isArray() ? QJsonValue(document.array()) : document.object();
  return resolved(value, path, depth);
}

Result<QJsonValue> included(const QJsonObject& object, const QString& file, int depth) {
  const QString name = object.value(QLatin1String("include")).toString();
  auto value = valueFromFile(QFileInfo(file).dir().filePath(name), depth + 1);
  if (!value) {
    foundation::Error error = value.error();
    error.message += QStringLiteral(", included from %1").arg(QFileInfo(file).fileName());
    return tl::unexpected(error);
  }
  if (object.size() == 1) return value;
  if (!value->isObject())
    return failure(QStringLiteral("fields beside an include need an object in %1").arg(name), file);
  QJsonObject merged = value->toObject();
  for (auto it = object.begin(); it != object.end(); ++it) {
    if (it.key() == QLatin1String("include")) continue;
    const auto field = resolved(it.value(), file, depth);
    if (!field) return field;
    merged.insert(it.key(), *field);
  }
  return QJsonValue(merged);
}

Result<QJsonValue> resolvedArray(const QJsonArray& array, const QString& file, int depth) {
  QJsonArray result;
  for (const QJsonValue& element : array) {
    const auto value = resolved(element, file, depth);
    if (!value) return value;
    if (value->isArray() && element.isObject()) {
      const QJsonArray spliced = value->toArray();
      for (const QJsonValue& inner : spliced) result.append(inner);
    } else {
      result.append(*value);
    }
  }
  return QJsonValue(result);
}

Result<QJsonValue> resolved(const QJsonValue& value, const QString& file, int depth) {
  if (value.isArray()) return resolvedArray(value.toArray(), file, depth);
  if (!value.isObject()) return value;
  QJsonObject object = value.toObject();
  if (object.contains(QLatin1String("include"))) return included(object, file, depth);
  for (auto it = object.begin(); it != object.end(); ++it) {
    const auto field = resolved(it.value(), file, depth);
    if (!field) return field;
    it.value() = *field;
  }
  return QJsonValue(object);
}

}  // namespace

Result<QJsonObject> SourceReader::objectFromFile(const QString& path) {
  const auto value = valueFromFile(path, 0);
  if (!value) return tl::unexpected(value.error());
  if (!value->isObject()) return failure(QStringLiteral("a source holds one object"), path);
  return value->toObject();
}

QByteArray SourceReader::withoutComments(QByteArray text) {
  bool inString = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\n') inString = false;  // JSON strings end on their line
    if (inString && c == '\\') {
      ++i;
    } else if (c == '"') {
      inString = !inString;
    } else if (!inString && c == '/' && i + 1 < text.size() && text[i + 1] == '/') {
      for (; i < text.size() && text[i] != '\n'; ++i) text[i] = ' ';
    }
  }
  return text;
}

}  // namespace components
