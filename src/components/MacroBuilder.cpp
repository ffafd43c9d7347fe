#include "components/MacroBuilder.h"

#include <QJsonArray>

#include "components/PortPlace.h"
#include "components/SourceValue.h"

namespace components {

using foundation::Error;
using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using quartz::QuartzPatch;

namespace {

const QLatin1String linkSign("<- ");

QString at(const QString& place, const char* field, qsizetype index = -1) {
  QString result = place.isEmpty() ? QString() : place + QLatin1Char('.');
  result += QLatin1String(field);
  return index < 0 ? result : result + QStringLiteral("[%1]").arg(index);
}

/// Text that may stand as a list of lines.
QString linesOf(const QJsonValue& value) {
  if (!value.isArray()) return value.toString();
  QStringList lines;
  const QJsonArray array = value.toArray();
  for (const QJsonValue& line : array) lines.append(line.toString());
  return lines.join(QLatin1Char('\n'));
}

/// The state of a node, its short forms (an expression, a script) included.
PropertyDictionary stateOf(const QJsonObject& node) {
  PropertyDictionary state = plainValue(node.value(QLatin1String("state"))).dictionary();
  if (node.contains(QLatin1String("timebase")))
    state.insert(QStringLiteral("timebase"), node.value(QLatin1String("timebase")).toString());
  if (node.contains(QLatin1String("expression")))
    state.insert(QStringLiteral("expression"), linesOf(node.value(QLatin1String("expression"))));
  if (node.contains(QLatin1String("script"))) {
    state.insert(QStringLiteral("script"), linesOf(node.value(QLatin1String("script"))));
    state.insert(QStringLiteral("newMode"), true);
    state.insert(QStringLiteral("version"), 1);
  }
  return state;
}

QString classOf(const QJsonObject& node) {
  if (node.contains(QLatin1String("class"))) return node.value(QLatin1String("class")).toString();
  if (node.contains(QLatin1String("expression"))) return QStringLiteral("QCExpression");
  return node.contains(QLatin1String("script")) ? QStringLiteral("QCJavaScript") : QString();
}

}  // namespace

const QStringList& MacroBuilder::contentFields() {
  static const QStringList fields = {QStringLiteral("declare"), QStringLiteral("nodes"),
                                     QStringLiteral("connections"), QStringLiteral("publish"),
                                     QStringLiteral("outputs")};
  return fields;
}

MacroBuilder::Failure MacroBuilder::checkFields(const QJsonObject& object,
                                                const QStringList& allowed, const QString& place) {
  for (auto it = object.begin(); it != object.end(); ++it)
    if (!allowed.contains(it.key()))
      return error(QStringLiteral("no field is called \"%1\" here").arg(it.key()), place);
  return {};
}

MacroBuilder::Failure MacroBuilder::build(const QJsonObject& source) {
  const auto list = [&source](const char* field) {
    return source.value(QLatin1String(field)).toArray();
  };
  if (auto e = addDeclaredInputs(list("declare"))) return e;
  if (auto e = addNodes(list("nodes"))) return e;
  if (auto e = readConnections(list("connections"))) return e;
  if (auto e = connectAll()) return e;
  if (auto e = publishInputs(list("publish"))) return e;
  if (auto e = publishOutputs(list("outputs"))) return e;
  for (auto it = m_defaults.begin(); it != m_defaults.end(); ++it)
    if (!m_nodes.contains(it.key()))
      return error(QStringLiteral("a default for an input that is not declared: %1").arg(it.key()),
                   m_place);
  return {};
}

MacroBuilder::Failure MacroBuilder::addDeclaredInputs(const QJsonArray& inputs) {
  for (qsizetype i = 0; i < inputs.size(); ++i)
    if (auto e = addDeclaredInput(inputs[i].toObject(), at(m_place, "declare", i))) return e;
  return {};
}

MacroBuilder::Failure MacroBuilder::addDeclaredInput(const QJsonObject& input,
                                                     const QString& place) {
  static const QStringList allowed = {QStringLiteral("key"),   QStringLiteral("type"),
                                      QStringLiteral("label"), QStringLiteral("value"),
                                      QStringLiteral("min"),   QStringLiteral("max"),
                                      QStringLiteral("menu")};
  if (auto e = checkFields(input, allowed, place)) return e;
  const QString key = input.value(QLatin1String("key")).toString();
  const auto type = InputType::named(input.value(QLatin1String("type")).toString());
  if (!type) return error(QStringLiteral("the type of %1 is unknown").arg(key), place);

  PropertyDictionary state{{QStringLiteral("portClass"), type->portClass},
                           {QStringLiteral("version"), 1}};
  if (input.contains(QLatin1String("min")))
    state.insert(QStringLiteral("inputMin"), input.value(QLatin1String("min")).toDouble());
  if (input.contains(QLatin1String("max")))
    state.insert(QStringLiteral("inputMax"), input.value(QLatin1String("max")).toDouble());
  if (const PropertyValue menu = plainValue(input.value(QLatin1String("menu"))); menu.isArray()) {
    state.insert(QStringLiteral("indexLabels"), menu);
    state.insert(QStringLiteral("inputMax"), static_cast<double>(menu.array().size() - 1));
  }
  QuartzPatch* splitter = m_macro.addPatchWithClass(QStringLiteral("QCSplitter"), state);
  if (auto e = take(splitter, key, place)) return e;
  const QString label = input.value(QLatin1String("label")).toString(key);
  splitter->setName(label);
  splitter->publishPort(QStringLiteral("input"), key, label);
  if (!type->hasValue()) return {};
  const QJsonValue wanted = m_defaults.value(key);
  const auto value =
      type->value(wanted.isUndefined() ? input.value(QLatin1String("value")) : wanted);
  if (!value)
    return error(QStringLiteral("the value of %1 is missing or of another type").arg(key), place);
  splitter->editState().insert(
      QStringLiteral("customInputPortStates"),
      PropertyDictionary{
          {QStringLiteral("input"), PropertyDictionary{{QStringLiteral("value"), *value}}}});
  m_macro.setPortValue(*value, key);
  return {};
}

MacroBuilder::Failure MacroBuilder::addNodes(const QJsonArray& nodes) {
  for (qsizetype i = 0; i < nodes.size(); ++i) {
    const QJsonObject node = nodes[i].toObject();
    const QString key = node.value(QLatin1String("key")).toString();
    QString place = at(m_place, "nodes", i);
    if (!key.isEmpty()) place += QStringLiteral(" (%1)").arg(key);
    if (auto e = addNode(node, place)) return e;
  }
  return {};
}

MacroBuilder::Failure MacroBuilder::addNode(const QJsonObject& node, const QString& place) {
  static const QStringList allowed =
      QStringList{
          QStringLiteral("class"),  QStringLiteral("identifier"), QStringLiteral("key"),
          QStringLiteral("name"),   QStringLiteral("state"),      QStringLiteral("timebase"),
          QStringLiteral("inputs"), QStringLiteral("expression"), QStringLiteral("script")} +
      contentFields();
  if (auto e = checkFields(node, allowed, place)) return e;
  const QString className = classOf(node);
  if (className.isEmpty()) return error(QStringLiteral("a node needs a class"), place);
  QuartzPatch* patch = m_macro.addPatchWithClass(className, stateOf(node));
  const QString identifier = node.value(QLatin1String("identifier")).toString();
  if (!identifier.isEmpty()) patch->setIdentifier(identifier);
  if (auto e = take(patch, node.value(QLatin1String("key")).toString(patch->key()), place))
    return e;
  const QString name = node.value(QLatin1String("name")).toString();
  if (!name.isEmpty()) patch->setName(name);

  MacroBuilder content(*patch, place);
  if (auto e = content.build(node)) return e;
  return setInputs(*patch, node.value(QLatin1String("inputs")).toObject(), place);
}

MacroBuilder::Failure MacroBuilder::setInputs(QuartzPatch& node, const QJsonObject& inputs,
                                              const QString& place) {
  for (auto it = inputs.begin(); it != inputs.end(); ++it) {
    const QString text = it.value().toString();
    if (text.startsWith(linkSign)) {
      m_links.append({text.mid(linkSign.size()), node.key() + QLatin1Char('.') + it.key(), place});
      continue;
    }
    const PropertyValue value = plainValue(it.value());
    if (value.isNull())
      return error(QStringLiteral("the value of %1 cannot be read").arg(it.key()), place);
    if (!node.infoForPublishedInputPortWithName(it.key()).isEmpty()) {
      node.setPortValue(value, it.key());
      continue;
    }
    PropertyDictionary& ports =
        node.editState().edit(stateOfPort(node.patchClass(), it.key())).editDictionary();
    ports.insert(it.key(), PropertyDictionary{{QStringLiteral("value"), value}});
  }
  return {};
}

MacroBuilder::Failure MacroBuilder::readConnections(const QJsonArray& connections) {
  for (qsizetype i = 0; i < connections.size(); ++i) {
    const QStringList ends = connections[i].toString().split(QLatin1String(" -> "));
    const QString place = at(m_place, "connections", i);
    if (ends.size() != 2)
      return error(QStringLiteral("a connection reads \"A.output -> B.input\""), place);
    m_links.append({ends[0].trimmed(), ends[1].trimmed(), place});
  }
  return {};
}

MacroBuilder::Failure MacroBuilder::connectAll() {
  for (const Link& link : std::as_const(m_links)) {
    const PortName from = split(link.from);
    const PortName to = split(link.to);
    for (const QString& node : {from.node, to.node})
      if (!m_nodes.contains(node))
        return error(QStringLiteral("\"%1 -> %2\" names a node that is not here: %3")
                         .arg(link.from, link.to, node),
                     link.place);
    m_macro.addConnectionFromComponent(
        from.node, from.port.isEmpty() ? QStringLiteral("output") : from.port, to.node,
        to.port.isEmpty() ? QStringLiteral("input") : to.port);
  }
  return {};
}

MacroBuilder::Failure MacroBuilder::publishInputs(const QJsonArray& ports) {
  static const QStringList allowed = {QStringLiteral("port"), QStringLiteral("key"),
                                      QStringLiteral("label"), QStringLiteral("value")};
  for (qsizetype i = 0; i < ports.size(); ++i) {
    const QJsonObject entry = ports[i].toObject();
    const QString place = at(m_place, "publish", i);
    if (auto e = checkFields(entry, allowed, place)) return e;
    const PortName name = split(entry.value(QLatin1String("port")).toString());
    QuartzPatch* node = m_nodes.value(name.node);
    if (!node) return error(QStringLiteral("no node is called \"%1\"").arg(name.node), place);
    const QString key = entry.value(QLatin1String("key")).toString(name.port);
    node->publishPort(name.port, key, entry.value(QLatin1String("label")).toString());
    const PropertyValue value = plainValue(entry.value(QLatin1String("value")));
    if (!value.isNull()) m_macro.setPortValue(value, key);
  }
  return {};
}

MacroBuilder::Failure MacroBuilder::publishOutputs(const QJsonArray& ports) {
  for (qsizetype i = 0; i < ports.size(); ++i) {
    const QJsonObject entry = ports[i].toObject();
    const QString place = at(m_place, "outputs", i);
    if (auto e = checkFields(entry, {QStringLiteral("port"), QStringLiteral("key")}, place))
      return e;
    const PortName name = split(entry.value(QLatin1String("port")).toString());
    QuartzPatch* node = m_nodes.value(name.node);
    if (!node) return error(QStringLiteral("no node is called \"%1\"").arg(name.node), place);
    const QString port = name.port.isEmpty() ? QStringLiteral("output") : name.port;
    node->publishOutputPort(port, entry.value(QLatin1String("key")).toString(port));
  }
  return {};
}

MacroBuilder::Failure MacroBuilder::take(QuartzPatch* node, const QString& key,
                                         const QString& place) {
  if (key.isEmpty() || key.contains(QLatin1Char('.')) || m_nodes.contains(key))
    return error(QStringLiteral("\"%1\" is taken or cannot be a node's key").arg(key), place);
  // A plain grid, six a row: readable in an editor, and without meaning.
  const auto index = static_cast<int>(m_nodes.size());
  node->setKey(key);
  node->setPosition(QPointF(index % 6 * 250, -(index / 6) * 150));
  m_nodes.insert(key, node);
  return {};
}

MacroBuilder::PortName MacroBuilder::split(const QString& text) {
  const qsizetype dot = text.indexOf(QLatin1Char('.'));
  return dot < 0 ? PortName{text, {}} : PortName{text.left(dot), text.mid(dot + 1)};
}

Error MacroBuilder::error(const QString& message, const QString& place) {
  return {message, {}, place};
}

}  // namespace components
