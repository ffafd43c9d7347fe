#pragma once

#include "store/EntityFactories.h"
#include "store/ObjectContext.h"
#include "store/xml/KeptParts.h"
#include "store/xml/StoreNotices.h"
#include "store/xml/StoreReader.h"

namespace store::xml {

/// Turns the contents of a store file into objects and into what has to be kept beside them.
class StoreLoading {
 public:
  StoreLoading(const EntityFactories& factories, StoreNotices& notices)
      : m_factories(factories), m_notices(notices) {}

  /// Of a newer version more is compared, since more may be lost.
  void load(StoreContents contents, bool isNewer);
  /// After load().
  [[nodiscard]] std::vector<FetchedObject> takeObjects() { return std::move(m_fetched); }
  [[nodiscard]] KeptFromFile takeKept() { return std::move(m_kept); }

 private:
  void makeObject(StoredObject stored);
  void setValue(FetchedObject& fetched, StoredValue stored, KeptParts& kept);
  void relate(FetchedObject& fetched, std::vector<StoredRelation> relations);
  [[nodiscard]] const FetchedObject* fetchedObject(ObjectId id) const;
  [[nodiscard]] bool fits(const ManagedObject& object, const StoredValue& stored);

  const EntityFactories& m_factories;
  StoreNotices& m_notices;
  bool m_isNewer = false;
  std::vector<FetchedObject> m_fetched;  // by ascending number
  std::vector<std::vector<StoredRelation>> m_relations;
  KeptFromFile m_kept;
  QHash<const PropertyDescription*, foundation::PropertyValue::Type> m_types;
};

}  // namespace store::xml
