#include "preview/fields/FieldsModel.h"

#include <QDir>
#include <QSet>

#include "playout/AcceptedValues.h"
#include "playout/ValueJson.h"

namespace preview {

using playout::InputValues;
using playout::ValueFailure;
using playout::ValueJson;
using runtime::PortAttributes;
using runtime::PortType;
using runtime::Value;

namespace {

bool looksTheSame(const PortAttributes& a, const PortAttributes& b) {
  return a.key == b.key && a.label == b.label && a.type == b.type && a.minimum == b.minimum &&
         a.maximum == b.maximum && a.menu == b.menu;
}

/// Pictures have no limits, and their files need not be there any more.
bool stillTakes(const PortAttributes& port, const std::optional<FieldValue>& value) {
  return !value || port.type == PortType::Image ||
         InputValues::fromJson(value->json, port, {}).has_value();
}

/// What is wrong, in a place where everybody sees which field it is about.
QString sentence(const ValueFailure& failure, const QString& key) {
  QString text =
      failure.kind == ValueFailure::Kind::Wrong ? failure.error.message : failure.error.text();
  const QString subject = QStringLiteral("'%1' ").arg(key);
  if (text.startsWith(subject)) {
    text = text.mid(subject.size());
    text[0] = text[0].toUpper();
  }
  return text.endsWith(u'.') ? text : text + u'.';
}

/// Empty means no picture, in values files.
QString absolute(const QString& path, const QString& folder) {
  return path.isEmpty() ? path : QDir::cleanPath(QDir(folder).absoluteFilePath(path));
}

}  // namespace

bool FieldsModel::isInternal(const QString& key) {
  return key == QLatin1String("trigger") || key.startsWith(u'_') ||
         key.contains(QLatin1String("videoInput"));
}

void FieldsModel::setInputs(const std::vector<PortAttributes>& inputs) {
  const std::vector<Field> before = std::exchange(m_fields, {});
  for (const Field& field : before)
    if (field.value || field.sent)
      m_dormant.insert(field.port.key, {field.port.type, field.value, field.sent});
  QSet<QString> seen;
  for (const PortAttributes& port : inputs) {
    if (isInternal(port.key) || !playout::AcceptedValues::canBeGiven(port.type)) continue;
    if (seen.contains(port.key)) continue;
    seen.insert(port.key);
    Field field{port};
    const auto known = m_dormant.constFind(port.key);
    if (known != m_dormant.constEnd() && known->type == port.type &&
        stillTakes(port, known->value) && stillTakes(port, known->sent)) {
      field.value = known->value;
      field.sent = known->sent;
      m_dormant.erase(known);
    }
    m_fields.push_back(std::move(field));
  }
  if (!std::equal(m_fields.begin(), m_fields.end(), before.begin(), before.end(),
                  [](const Field& a, const Field& b) { return looksTheSame(a.port, b.port); })) {
    Q_EMIT fieldsChanged();
    return;
  }
  for (const Field& field : m_fields) Q_EMIT valueChanged(field.port.key);
}

QStringList FieldsModel::keys() const {
  QStringList keys;
  for (const Field& field : m_fields) keys.append(field.port.key);
  return keys;
}

const Field* FieldsModel::field(const QString& key) const {
  return const_cast<FieldsModel*>(this)->find(key);
}

Field* FieldsModel::find(const QString& key) {
  const auto found = std::find_if(m_fields.begin(), m_fields.end(),
                                  [&key](const Field& field) { return field.port.key == key; });
  return found == m_fields.end() ? nullptr : &*found;
}

std::vector<playout::InputValue> FieldsModel::sentValues() const {
  std::vector<playout::InputValue> values;
  for (const Field& field : m_fields)
    if (field.sent) values.push_back({field.port.key, field.sent->value});
  return values;
}

FieldsModel::Entries FieldsModel::entries() const {
  Entries all = m_dormant;
  for (const Field& field : m_fields)
    if (field.value || field.sent)
      all.insert(field.port.key, {field.port.type, field.value, field.sent});
  return all;
}

void FieldsModel::setEntries(const Entries& entries) {
  for (Field& field : m_fields) field.value = field.sent = std::nullopt;
  m_dormant = entries;
}

tl::expected<void, QString> FieldsModel::enter(const QString& key, const QJsonValue& json,
                                               const QString& folder) {
  Field* field = find(key);
  if (!field) return tl::unexpected(tr("There is no field “%1”.").arg(key));
  return take(field, InputValues::fromJson(json, field->port, folder),
              absolute(json.toString(), folder));
}

tl::expected<void, QString> FieldsModel::enterText(const QString& key, const QString& text,
                                                   const QString& folder) {
  Field* field = find(key);
  if (!field) return tl::unexpected(tr("There is no field “%1”.").arg(key));
  return take(field, InputValues::fromText(text, field->port, folder), absolute(text, folder));
}

tl::expected<void, QString> FieldsModel::take(Field* field,
                                              const tl::expected<Value, ValueFailure>& value,
                                              const QString& path) {
  if (!value) return tl::unexpected(sentence(value.error(), field->port.key));
  const bool isPicture = field->port.type == PortType::Image;
  const QJsonValue json = isPicture ? path : ValueJson::of(*value, field->port.type);
  assign(*field, *value == field->port.defaultValue
                     ? std::nullopt
                     : std::optional<FieldValue>(FieldValue{json, *value}));
  return {};
}

void FieldsModel::setPicturePath(const QString& key, const QString& path) {
  Field* field = find(key);
  if (!field || !field->value) return;
  const bool isSent = field->sent == field->value;
  field->value->json = path;
  if (isSent) field->sent = field->value;
  Q_EMIT valueChanged(key);
}

QStringList FieldsModel::pictureKeys() const {
  QStringList keys;
  for (const Field& field : m_fields)
    if (field.port.type == PortType::Image) keys.append(field.port.key);
  return keys;
}

void FieldsModel::restore(const QString& key, const std::optional<FieldValue>& value) {
  if (Field* field = find(key)) assign(*field, value);
}

void FieldsModel::assign(Field& field, std::optional<FieldValue> value) {
  if (field.value == value && (m_holds || !field.isPending())) return;
  field.value = std::move(value);
  if (!m_holds) send(field);
  Q_EMIT valueChanged(field.port.key);
}

void FieldsModel::send(Field& field) {
  field.sent = field.value;
  Q_EMIT sending(field.port.key, field.current());
}

void FieldsModel::resetAll() {
  for (Field& field : m_fields) {
    if (!field.value && !field.sent) continue;
    field.value.reset();
    send(field);
    Q_EMIT valueChanged(field.port.key);
  }
  m_dormant.clear();
  Q_EMIT filled();
}

QStringList FieldsModel::fill(const QJsonObject& values, const QString& folder,
                              const QStringList& named) {
  QStringList wrong;
  QStringList empty = named;
  for (auto it = values.begin(); it != values.end(); ++it)
    if (const auto entered = enter(it.key(), it.value(), folder))
      empty.removeAll(it.key());
    else
      wrong += tr("%1: %2").arg(it.key(), entered.error());
  // What is left of another set or row would be told as if it belonged to this one.
  for (const QString& key : std::as_const(empty)) reset(key);
  Q_EMIT filled();
  return wrong;
}

QJsonObject FieldsModel::filledIn() const {
  QJsonObject values;
  for (const Field& field : m_fields)
    if (field.value && !field.value->json.isUndefined())
      values.insert(field.port.key, field.value->json);
  return values;
}

void FieldsModel::setHoldsChanges(bool holds) {
  if (m_holds == holds) return;
  m_holds = holds;
  Q_EMIT holdsChangesChanged(holds);
}

int FieldsModel::pendingCount() const {
  return static_cast<int>(std::count_if(m_fields.begin(), m_fields.end(),
                                        [](const Field& field) { return field.isPending(); }));
}

void FieldsModel::update() {
  for (Field& field : m_fields) {
    if (!field.isPending()) continue;
    send(field);
    Q_EMIT valueChanged(field.port.key);
  }
}

}  // namespace preview
