#include "store/xml/StoreLoading.h"

#include <algorithm>

namespace store::xml {

using foundation::PropertyValue;

namespace {

bool isNumeric(PropertyValue::Type type) {
  return type == PropertyValue::Type::Boolean || type == PropertyValue::Type::Integer ||
         type == PropertyValue::Type::Real;
}

}  // namespace

void StoreLoading::load(StoreContents contents, bool isNewer) {
  m_isNewer = isNewer;
  m_kept.version = contents.version;
  m_kept.attributes = contents.attributes;
  m_kept.elements = contents.elements;
  m_kept.blocks = contents.blocks;
  if (!contents.elements.isEmpty()) m_notices.unknownElements(contents.elements.size());
  m_fetched.reserve(contents.objects.size());
  for (StoredObject& object : contents.objects) makeObject(std::move(object));
  for (size_t i = 0; i < m_fetched.size(); ++i) relate(m_fetched[i], std::move(m_relations[i]));
}

void StoreLoading::makeObject(StoredObject stored) {
  const auto factory = m_factories.constFind(stored.entity);
  if (factory == m_factories.cend()) {
    m_notices.unknownEntity(stored.entity);
    m_kept.objects.emplace_hint(m_kept.objects.end(), stored.id, std::move(stored));
    return;
  }
  FetchedObject fetched{stored.id, (*factory)()};
  KeptParts kept;
  kept.attributes = stored.attributes;
  kept.elements = stored.elements;
  if (!kept.elements.isEmpty()) m_notices.unknownKey(stored.entity, QString());
  for (StoredValue& value : stored.values) setValue(fetched, std::move(value), kept);
  if (!kept.isEmpty()) m_kept.parts.insert(stored.id, std::move(kept));
  m_fetched.push_back(std::move(fetched));
  m_relations.push_back(std::move(stored.relations));
}

/// Whether the value has the type of the default. Numbers may stand for each other, as they may in
/// a text that somebody edited; a default that is none says nothing.
bool StoreLoading::fits(const ManagedObject& object, const StoredValue& stored) {
  const Entity& entity = object.entity();
  const PropertyDescription& property =
      entity.properties()[static_cast<size_t>(entity.propertyIndex(stored.key))];
  auto type = m_types.constFind(&property);
  if (type == m_types.cend())
    type = m_types.insert(&property, property.codec->encode(property.defaultValue).type());
  return *type == PropertyValue::Type::Null || *type == stored.value.type() ||
         (isNumeric(*type) && isNumeric(stored.value.type()));
}

void StoreLoading::setValue(FetchedObject& fetched, StoredValue stored, KeptParts& kept) {
  ManagedObject& object = *fetched.object;
  const Entity& entity = object.entity();
  const int index = entity.propertyIndex(stored.key);
  if (index < 0 || !entity.properties()[static_cast<size_t>(index)].codec) {
    m_notices.unknownKey(entity.name(), stored.key);
    kept.values.push_back({std::move(stored)});
    return;
  }
  const bool isUsable = stored.isReadable && fits(object, stored);
  if (isUsable)
    object.setStoredValue(stored.value, stored.key);
  else
    m_notices.unreadable(entity.name(), fetched.id, stored.key, stored.line);
  if (isUsable && stored.isWhole && !m_isNewer) return;
  PropertyValue here = object.storedValue(stored.key);
  if (isUsable && stored.isWhole && here == stored.value) return;
  if (isUsable) m_notices.notWhole(entity.name(), fetched.id, stored.key, stored.line);
  kept.values.push_back({std::move(stored), std::move(here)});
}

const FetchedObject* StoreLoading::fetchedObject(ObjectId id) const {
  const auto found = std::lower_bound(
      m_fetched.begin(), m_fetched.end(), id,
      [](const FetchedObject& object, ObjectId number) { return object.id < number; });
  return found != m_fetched.end() && found->id == id ? &*found : nullptr;
}

void StoreLoading::relate(FetchedObject& fetched, std::vector<StoredRelation> relations) {
  const Entity& entity = fetched.object->entity();
  for (StoredRelation& relation : relations) {
    const int index = entity.toOneIndex(relation.key);
    if (index < 0) {
      m_notices.unknownKey(entity.name(), relation.key);
      m_kept.parts[fetched.id].relations.push_back({std::move(relation)});
      continue;
    }
    const QString& inverse = entity.toOnes()[static_cast<size_t>(index)].inverseKey;
    const FetchedObject* target = fetchedObject(relation.to);
    if (target && target->object->entity().toManyIndex(inverse) >= 0) {
      fetched.relations.append({relation.key, relation.to});
      if (!relation.element.isEmpty())
        m_kept.parts[fetched.id].relations.push_back({relation, relation.to});
    } else if (m_kept.objects.contains(relation.to)) {
      m_kept.parts[fetched.id].relations.push_back({std::move(relation), 0});
    } else {
      m_notices.lostRelation(entity.name(), fetched.id, relation);
    }
  }
}

}  // namespace store::xml
