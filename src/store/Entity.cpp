#include "store/Entity.h"

namespace store {

const DerivedDescription* Entity::derived(const QString& key) const {
  for (const DerivedDescription& description : m_derived)
    if (description.key == key) return &description;
  return nullptr;
}

const QStringList& Entity::dependents(const QString& key) const {
  static const QStringList none;
  const auto found = m_dependents.constFind(key);
  return found == m_dependents.cend() ? none : *found;
}

void Entity::derive(const char* key, std::initializer_list<const char*> from,
                    std::function<QVariant(const ManagedObject&)> read) {
  m_derived.push_back({QString::fromLatin1(key), std::move(read)});
  announceAlong(key, from);
}

void Entity::announceAlong(const char* key, std::initializer_list<const char*> with) {
  const QString derivedKey = QString::fromLatin1(key);
  for (const char* source : with) {
    const QString sourceKey = QString::fromLatin1(source);
    m_dependents[sourceKey].append(derivedKey);
    // What the source itself follows from announces the new key too.
    for (auto it = m_dependents.begin(); it != m_dependents.end(); ++it)
      if (it.key() != sourceKey && it->contains(sourceKey) && !it->contains(derivedKey))
        it->append(derivedKey);
  }
}

int Entity::addProperty(PropertyDescription description) {
  const int index = static_cast<int>(m_properties.size());
  m_propertyByKey.insert(description.key, index);
  m_properties.push_back(std::move(description));
  return index;
}

int Entity::addToOne(ToOneDescription description) {
  const int index = static_cast<int>(m_toOnes.size());
  m_toOneByKey.insert(description.key, index);
  m_toOnes.push_back(std::move(description));
  return index;
}

int Entity::addToMany(ToManyDescription description) {
  const int index = static_cast<int>(m_toManys.size());
  m_toManyByKey.insert(description.key, index);
  m_toManys.push_back(std::move(description));
  return index;
}

}  // namespace store
