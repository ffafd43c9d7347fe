#include "quartz/QuartzPatch.h"

#include <QSet>

#include "quartz/QuartzComposition.h"

namespace quartz {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

const QString classKey = QStringLiteral("class");
const QString keyKey = QStringLiteral("key");
const QString identifierKey = QStringLiteral("identifier");
const QString stateKey = QStringLiteral("state");
const QString nodesKey = QStringLiteral("nodes");
const QString connectionsKey = QStringLiteral("connections");
const QString inputPortsKey = QStringLiteral("publishedInputPorts");
const QString outputPortsKey = QStringLiteral("publishedOutputPorts");
const QString builtInPortsKey = QStringLiteral("ivarInputPortStates");
const QString customPortsKey = QStringLiteral("customInputPortStates");
const QString userInfoKey = QStringLiteral("userInfo");
const QString timebaseKey = QStringLiteral("timebase");
const QString valueKey = QStringLiteral("value");

PropertyDictionary emptyMacro() {
  return {{classKey, QStringLiteral("QCPatch")}, {stateKey, PropertyDictionary()}};
}

PropertyDictionary publishedEntry(const QString& key, const QString& node, const QString& port) {
  return {{keyKey, key}, {QStringLiteral("node"), node}, {QStringLiteral("port"), port}};
}

/// The state that carries the label of a published port.
PropertyDictionary labelState(const QString& label) {
  UserInfo info;
  info.name = label;
  return {{userInfoKey, info.toArchive()}};
}

/// The mutable containers that every patch has.
void completeState(PropertyDictionary& state) {
  if (!state.value(connectionsKey).isDictionary())
    state.insert(connectionsKey, PropertyDictionary());
  if (!state.value(inputPortsKey).isArray()) state.insert(inputPortsKey, PropertyArray());
}

/// The number that the text begins with; 0 when it begins with none.
int leadingInteger(const QString& text) {
  qsizetype length = 0;
  while (length < text.size() && text[length] >= u'0' && text[length] <= u'9') ++length;
  return QStringView(text).first(length).toInt();
}

}  // namespace

QuartzPatch::QuartzPatch() : QuartzPatch(emptyMacro()) {}

QuartzPatch::QuartzPatch(PropertyDictionary dictionary) : m_data(std::move(dictionary)) {
  PropertyDictionary& state = m_data.edit(stateKey).editDictionary();
  PropertyValue children = state.take(nodesKey);
  completeState(state);
  if (!children.isArray()) return;
  m_nodes.reserve(static_cast<size_t>(children.array().size()));
  for (PropertyValue& child : children.editArray())
    addNode(std::make_unique<QuartzPatch>(std::move(child.editDictionary())));
}

QuartzPatch::QuartzPatch(QuartzComposition* composition, PropertyDictionary dictionary)
    : QuartzPatch(dictionary.isEmpty() ? emptyMacro() : std::move(dictionary)) {
  m_composition = composition;
}

std::unique_ptr<QuartzPatch> QuartzPatch::copy() const {
  return std::make_unique<QuartzPatch>(patchDataForFileData());
}

const PropertyDictionary& QuartzPatch::state() const {
  return m_data.value(stateKey).dictionary();
}

PropertyDictionary& QuartzPatch::editState() {
  return m_data.edit(stateKey).editDictionary();
}

QString QuartzPatch::patchClass() const {
  return m_data.value(classKey).toString();
}

void QuartzPatch::setPatchClass(const QString& name) {
  if (name.startsWith(QLatin1String("BRV"))) {
    setIdentifier(name);
    m_data.insert(classKey, QStringLiteral("QCPlugInPatch"));
  } else {
    m_data.insert(classKey, name);
  }
}

QString QuartzPatch::key() const {
  return m_data.value(keyKey).toString();
}

void QuartzPatch::setKey(const QString& key) {
  if (m_parentPatch) m_parentPatch->m_nodeKeys.remove(this->key());
  m_data.insert(keyKey, key);
  if (m_parentPatch) m_parentPatch->m_nodeKeys.add(key);
}

QString QuartzPatch::identifier() const {
  return m_data.value(identifierKey).toString();
}

void QuartzPatch::setIdentifier(const QString& identifier) {
  m_data.insert(identifierKey, identifier);
}

UserInfo QuartzPatch::userInfo() const {
  return UserInfo::fromArchive(state().value(userInfoKey).toData());
}

void QuartzPatch::setUserInfo(const UserInfo& userInfo) {
  editState().insert(userInfoKey, userInfo.toArchive(state().value(userInfoKey).toData()));
}

QString QuartzPatch::name() const {
  return userInfo().name.value_or(key());
}

void QuartzPatch::setName(const QString& name) {
  UserInfo info = userInfo();
  info.name = name;
  setUserInfo(info);
}

QPointF QuartzPatch::position() const {
  return userInfo().position.value_or(QPointF());
}

void QuartzPatch::setPosition(const QPointF& position) {
  UserInfo info = userInfo();
  info.position = position;
  setUserInfo(info);
}

bool QuartzPatch::timebased() const {
  return state().contains(timebaseKey);
}

PropertyValue QuartzPatch::timebase() const {
  return state().value(timebaseKey);
}

void QuartzPatch::setTimebase(const PropertyValue& timebase) {
  if (timebase.isNull())
    editState().remove(timebaseKey);
  else
    editState().insert(timebaseKey, timebase);
}

QuartzComposition* QuartzPatch::composition() const {
  if (m_composition) return m_composition;
  return m_parentPatch ? m_parentPatch->composition() : nullptr;
}

QuartzPatch* QuartzPatch::addNode(std::unique_ptr<QuartzPatch> patch) {
  patch->setParentPatch(this);
  m_nodeKeys.add(patch->key());
  m_nodes.push_back(std::move(patch));
  return m_nodes.back().get();
}

std::unique_ptr<QuartzPatch> QuartzPatch::takeNode(const QuartzPatch* node) {
  const auto found = std::find_if(m_nodes.begin(), m_nodes.end(),
                                  [&](const auto& held) { return held.get() == node; });
  if (found == m_nodes.end()) return nullptr;
  std::unique_ptr<QuartzPatch> taken = std::move(*found);
  m_nodes.erase(found);
  m_nodeKeys.remove(taken->key());
  taken->setParentPatch(nullptr);
  return taken;
}

QString QuartzPatch::uniqueNodeKey(const QString& wanted) {
  return m_nodeKeys.uniqueKey(wanted);
}

QuartzPatch* QuartzPatch::addPatchWithClass(const QString& className,
                                            const PropertyDictionary& state,
                                            const PropertyDictionary& inputPortState) {
  auto patch = std::make_unique<QuartzPatch>();
  patch->setPatchClass(className);
  PropertyDictionary full = state;
  completeState(full);
  PropertyDictionary ports;
  for (const auto& [port, value] : inputPortState)
    ports.insert(port, PropertyDictionary{{valueKey, value}});
  full.insert(builtInPortsKey, std::move(ports));
  patch->m_data.insert(stateKey, std::move(full));

  patch->setKey(m_nodeKeys.unusedKey(patch->patchClass()));
  return addNode(std::move(patch));
}

void QuartzPatch::addNodesOfPatch(QuartzPatch& other) {
  for (std::unique_ptr<QuartzPatch>& node : other.m_nodes) addNode(std::move(node));
  other.m_nodes.clear();
  other.m_nodeKeys = {};
  m_highestConnection.reset();
  PropertyDictionary& connections = editState().edit(connectionsKey).editDictionary();
  for (const auto& [name, connection] : other.state().value(connectionsKey).dictionary())
    connections.insert(name, connection);
  const PropertyArray published = other.state().value(inputPortsKey).array();
  for (const PropertyValue& entry : published) {
    editState().edit(inputPortsKey).editArray().append(entry);
    const QString key = entry.dictionary().value(keyKey).toString();
    const QString label = labelOfPublishedPort(entry.dictionary());
    publishPort(key, key, label.isNull() ? key : label);
  }
  setTimebase(other.timebase());
}

void QuartzPatch::addConnectionFromComponent(const QString& source, const QString& fromPort,
                                             const QString& toComponent, const QString& toPort) {
  constexpr qsizetype prefix = 11;  // "connection_"
  PropertyDictionary& connections = editState().edit(connectionsKey).editDictionary();
  if (!m_highestConnection) {
    m_highestConnection = 0;
    for (const auto& [name, connection] : std::as_const(connections))
      m_highestConnection = std::max(*m_highestConnection, leadingInteger(name.mid(prefix)));
  }
  connections.insert(QStringLiteral("connection_%1").arg(++*m_highestConnection),
                     PropertyDictionary{{QStringLiteral("sourceNode"), source},
                                        {QStringLiteral("sourcePort"), fromPort},
                                        {QStringLiteral("destinationNode"), toComponent},
                                        {QStringLiteral("destinationPort"), toPort}});
}

void QuartzPatch::publishPort(const QString& port, const QString& withName,
                              const std::optional<QString>& label) {
  if (!m_parentPatch) return;
  PropertyDictionary entry = publishedEntry(withName, key(), port);
  if (label) entry.insert(stateKey, labelState(*label));
  m_parentPatch->editState().edit(inputPortsKey).editArray().append(std::move(entry));
}

void QuartzPatch::publishOutputPort(const QString& port, const QString& withName) {
  if (!m_parentPatch) return;
  PropertyDictionary entry = publishedEntry(withName, key(), port);
  entry.insert(stateKey, labelState(withName));
  m_parentPatch->editState().edit(outputPortsKey).editArray().append(std::move(entry));
}

PropertyDictionary QuartzPatch::infoForPublishedInputPortWithName(const QString& key) const {
  for (const PropertyValue& entry : state().value(inputPortsKey).array())
    if (entry.dictionary().value(keyKey).toString() == key) return entry.dictionary();
  return {};
}

void QuartzPatch::setPortValue(const PropertyValue& value, const QString& key) {
  const PropertyDictionary published = infoForPublishedInputPortWithName(key);
  if (published.isEmpty()) {
    if (!setPortValue(value, key, builtInPortsKey)) setPortValue(value, key, customPortsKey);
    return;
  }
  PropertyArray& entries = editState().edit(inputPortsKey).editArray();
  entries.removeOne(published);
  PropertyDictionary moved = published;
  moved.edit(stateKey).editDictionary().insert(valueKey, value);
  entries.append(std::move(moved));
}

bool QuartzPatch::setPortValue(const PropertyValue& value, const QString& key,
                               const QString& inState) {
  if (!state().value(inState).isDictionary()) return false;
  editState().edit(inState).editDictionary().insert(key, PropertyDictionary{{valueKey, value}});
  return true;
}

PropertyValue QuartzPatch::portValueForKey(const QString& key) const {
  return infoForPublishedInputPortWithName(key).value(valueKey);
}

QuartzPatch* QuartzPatch::patchWithName(const QString& name) const {
  for (const auto& node : m_nodes)
    if (node->name() == name) return node.get();
  return nullptr;
}

PropertyDictionary QuartzPatch::patchDataForFileData() const {
  PropertyArray children;
  children.reserve(static_cast<qsizetype>(m_nodes.size()));
  for (const auto& node : m_nodes) children.append(node->patchDataForFileData());
  PropertyDictionary data = m_data;
  data.edit(stateKey).editDictionary().insert(nodesKey, std::move(children));
  return data;
}

QString QuartzPatch::labelOfPublishedPort(const PropertyDictionary& entry) {
  return UserInfo::fromArchive(entry.value(stateKey).dictionary().value(userInfoKey).toData())
      .name.value_or(QString());
}

}  // namespace quartz
