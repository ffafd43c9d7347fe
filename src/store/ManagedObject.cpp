#include "store/ManagedObject.h"

#include "store/ObjectContext.h"

namespace store {

namespace {

/// Observes the first key of a path, and the rest of the path at the object that it leads to.
class PathObservation : public std::enable_shared_from_this<PathObservation> {
 public:
  PathObservation(QStringList rest, Observer observer)
      : m_rest(std::move(rest)), m_observer(std::move(observer)) {}

  void follow(ManagedObject& object, const QString& firstKey) {
    m_first = object.observe(firstKey, [this](const Change& change) {
      const auto alive = shared_from_this();
      followRest(*change.object, change.key);
      m_observer(change);
    });
    followRest(object, firstKey);
  }

 private:
  void followRest(const ManagedObject& object, const QString& firstKey) {
    m_next.reset();
    auto* next = object.valueForKey(firstKey).value<ManagedObject*>();
    if (!next || m_rest.isEmpty()) return;
    m_next = std::make_shared<PathObservation>(m_rest.mid(1), m_observer);
    m_next->follow(*next, m_rest.first());
  }

  QStringList m_rest;
  Observer m_observer;
  Subscription m_first;
  std::shared_ptr<PathObservation> m_next;
};

}  // namespace

ManagedObject::ManagedObject(const Entity& entity)
    : m_entity(entity), m_toOnes(entity.toOnes().size()), m_toManys(entity.toManys().size()) {
  m_values.reserve(entity.properties().size());
  for (const PropertyDescription& property : entity.properties())
    m_values.push_back(property.defaultValue);
}

ManagedObject::~ManagedObject() = default;

QVariant ManagedObject::valueForKey(const QString& key) const {
  if (const int index = m_entity.propertyIndex(key); index >= 0)
    return m_values[static_cast<size_t>(index)];
  if (const int index = m_entity.toOneIndex(key); index >= 0)
    return QVariant::fromValue(m_toOnes[static_cast<size_t>(index)]);
  if (const int index = m_entity.toManyIndex(key); index >= 0)
    return QVariant::fromValue(
        ObjectsOf<ManagedObject>(m_toManys[static_cast<size_t>(index)]).list());
  if (const DerivedDescription* derived = m_entity.derived(key); derived && derived->read)
    return derived->read(*this);
  return valueForUndefinedKey(key);
}

bool ManagedObject::setValueForKey(const QVariant& value, const QString& key) {
  const int index = m_entity.propertyIndex(key);
  if (index < 0) return setValueForUndefinedKey(value, key);
  const QVariant& current = m_values[static_cast<size_t>(index)];
  QVariant converted = value;
  if (converted.metaType() != current.metaType() && !converted.convert(current.metaType()))
    return false;
  if (converted != current) setPropertyValue(index, std::move(converted));
  return true;
}

QVariant ManagedObject::valueForUndefinedKey(const QString&) const {
  return {};
}

bool ManagedObject::setValueForUndefinedKey(const QVariant&, const QString&) {
  return false;
}

Subscription ManagedObject::observe(const QString& key, Observer observer) {
  if (!m_observers) m_observers = std::make_unique<std::map<QString, ObserverList<Change>>>();
  return (*m_observers)[key].add(std::move(observer));
}

Subscription ManagedObject::observeKeyPath(const QString& keyPath, Observer observer) {
  const QStringList keys = keyPath.split(QLatin1Char('.'));
  auto observation = std::make_shared<PathObservation>(keys.mid(1), std::move(observer));
  observation->follow(*this, keys.first());
  return Subscription(observation);
}

void ManagedObject::announce(const QString& key) {
  callObservers({this, key, {}, {}});
  for (const QString& dependent : m_entity.dependents(key))
    callObservers({this, dependent, {}, {}});
}

foundation::PropertyValue ManagedObject::storedValue(const QString& key) const {
  const int index = m_entity.propertyIndex(key);
  if (index < 0) return {};
  const PropertyDescription& property = m_entity.properties()[static_cast<size_t>(index)];
  return property.codec ? property.codec->encode(m_values[static_cast<size_t>(index)])
                        : foundation::PropertyValue();
}

bool ManagedObject::setStoredValue(const foundation::PropertyValue& stored, const QString& key) {
  const int index = m_entity.propertyIndex(key);
  if (index < 0) return false;
  const PropertyDescription& property = m_entity.properties()[static_cast<size_t>(index)];
  if (!property.codec) return false;
  QVariant value = property.codec->decode(stored);
  if (value != m_values[static_cast<size_t>(index)]) setPropertyValue(index, std::move(value));
  return true;
}

bool ManagedObject::setStoredRelation(ManagedObject* related, const QString& key) {
  const int index = m_entity.toOneIndex(key);
  if (index < 0 || !m_context || (related && related->m_context != m_context)) return false;
  const QString& inverse = m_entity.toOnes()[static_cast<size_t>(index)].inverseKey;
  if (related && related->m_entity.toManyIndex(inverse) < 0) return false;
  setRelated(index, related);
  return true;
}

void ManagedObject::setPropertyValue(int index, QVariant value, Recorded recorded) {
  if (m_context)
    m_context->changeValue(*this, index, std::move(value), recorded == Recorded::Always);
  else
    m_values[static_cast<size_t>(index)] = std::move(value);
}

void ManagedObject::setRelated(int index, ManagedObject* object) {
  Q_ASSERT_X(m_context && (!object || object->m_context == m_context), "ManagedObject",
             "related objects live in one context");
  if (m_toOnes[static_cast<size_t>(index)] != object)
    m_context->changeRelation(*this, index, object);
}

void ManagedObject::callObservers(const Change& change) {
  if (!m_observers) return;
  const auto found = m_observers->find(change.key);
  if (found != m_observers->end()) found->second.call(change);
}

}  // namespace store
