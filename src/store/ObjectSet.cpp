#include "store/ObjectSet.h"

#include <algorithm>

#include "store/ManagedObject.h"

namespace store {

namespace {

auto placeOf(const std::vector<ManagedObject*>& objects, const ManagedObject* object) {
  return std::lower_bound(
      objects.begin(), objects.end(), object,
      [](const ManagedObject* a, const ManagedObject* b) { return a->objectId() < b->objectId(); });
}

}  // namespace

void ObjectSet::insert(ManagedObject* object) {
  const auto place = placeOf(m_objects, object);
  if (place == m_objects.end() || *place != object) m_objects.insert(place, object);
}

void ObjectSet::erase(const ManagedObject* object) {
  const auto place = placeOf(m_objects, object);
  if (place != m_objects.end() && *place == object) m_objects.erase(place);
}

bool ObjectSet::contains(const ManagedObject* object) const {
  const auto place = placeOf(m_objects, object);
  return place != m_objects.end() && *place == object;
}

}  // namespace store
