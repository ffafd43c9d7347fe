#include "playout/InputSchema.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "playout/AcceptedValues.h"
#include "playout/InputValues.h"
#include "playout/ValueJson.h"

namespace playout {

using runtime::PortAttributes;
using runtime::PortType;

namespace {

const QString typeKey = QStringLiteral("type");
const QString descriptionKey = QStringLiteral("description");

void addLimits(const AcceptedValues& accepted, QJsonObject& schema) {
  if (accepted.lowest()) schema.insert(QStringLiteral("minimum"), *accepted.lowest());
  if (accepted.highest()) schema.insert(QStringLiteral("maximum"), *accepted.highest());
}

/// A choice is made by the title of an item or by its number.
void addMenu(const QStringList& titles, QJsonObject& schema) {
  QStringList once = titles;
  once.removeDuplicates();
  QJsonArray choices = QJsonArray::fromStringList(once);
  QStringList numbered;
  for (qsizetype i = 0; i < titles.size(); ++i) {
    choices.append(i);
    numbered += QStringLiteral("%1 %2").arg(i).arg(titles[i]);
  }
  schema.insert(QStringLiteral("enum"), choices);
  schema.insert(descriptionKey, numbered.join(QStringLiteral(", ")));
}

void addType(const PortAttributes& port, const AcceptedValues& accepted, QJsonObject& schema) {
  const auto types = [](const char* one, const char* other) {
    return QJsonArray{QString::fromLatin1(one), QString::fromLatin1(other)};
  };
  switch (port.type) {
    case PortType::Number:
      schema.insert(typeKey, QStringLiteral("number"));
      return addLimits(accepted, schema);
    case PortType::Index:
      if (!port.menu.isEmpty()) return addMenu(accepted.titles(), schema);
      schema.insert(typeKey, QStringLiteral("integer"));
      return addLimits(accepted, schema);
    case PortType::Boolean:
      schema.insert(typeKey, QStringLiteral("boolean"));
      return;
    case PortType::String:
      schema.insert(typeKey, types("string", "number"));
      return;
    case PortType::Color:
      schema.insert(typeKey, QStringLiteral("string"));
      schema.insert(QStringLiteral("pattern"), AcceptedValues::colorPattern());
      schema.insert(descriptionKey, QStringLiteral("#RRGGBB or #RRGGBBAA"));
      return;
    case PortType::Image:
      schema.insert(typeKey, QStringLiteral("string"));
      schema.insert(descriptionKey,
                    QStringLiteral("path of a picture file, from the folder of the values file "
                                   "on; empty for no picture"));
      return;
    case PortType::Structure:
      schema.insert(typeKey, types("array", "object"));
      return;
    default:  // anything
      return;
  }
}

QJsonObject schemaOf(const PortAttributes& port) {
  const AcceptedValues accepted(port);
  QJsonObject schema;
  if (!port.label.isEmpty()) schema.insert(QStringLiteral("title"), port.label);
  addType(port, accepted, schema);
  QJsonValue usual = ValueJson::of(port.defaultValue, port.type);
  const QStringList titles = accepted.titles();
  if (usual.isDouble() && !accepted.isWithinLimits(usual.toDouble())) usual = QJsonValue::Undefined;
  if (usual.isDouble() && !titles.isEmpty()) usual = titles[usual.toInt()];
  if (!usual.isUndefined()) schema.insert(QStringLiteral("default"), usual);
  return schema;
}

QString quoted(const QString& text) {
  const QByteArray list =
      QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);  // ["text"]
  return QString::fromUtf8(list.mid(1, list.size() - 2));
}

/// Moves all lines but the first to the right.
QString indented(const QJsonObject& object, const QString& indent) {
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Indented))
      .trimmed()
      .replace(QLatin1Char('\n'), QLatin1Char('\n') + indent);
}

}  // namespace

InputSchema::InputSchema(QString title, const runtime::CompositionRenderer& renderer)
    : m_title(std::move(title)) {
  for (const PortAttributes& port : InputValues::inputsOf(renderer))
    if (AcceptedValues::canBeGiven(port.type)) m_inputs.push_back(port);
}

// The outer object is put together as text because Qt's JSON objects sort their keys.
QString InputSchema::json() const {
  const QString step = QStringLiteral("    ");
  QStringList properties;
  for (const PortAttributes& port : m_inputs)
    properties += step + step + quoted(port.key) + QStringLiteral(": ") +
                  indented(schemaOf(port), step + step);
  const QString list = properties.isEmpty()
                           ? QStringLiteral("{}")
                           : QStringLiteral("{\n") + properties.join(QStringLiteral(",\n")) +
                                 QStringLiteral("\n    }");
  const QStringList members{
      QStringLiteral("\"$schema\": \"https://json-schema.org/draft/2020-12/schema\""),
      QStringLiteral("\"title\": ") + quoted(m_title), QStringLiteral("\"type\": \"object\""),
      QStringLiteral("\"properties\": ") + list, QStringLiteral("\"additionalProperties\": false")};
  return QStringLiteral("{\n") + step + members.join(QStringLiteral(",\n") + step) +
         QStringLiteral("\n}");
}

}  // namespace playout
