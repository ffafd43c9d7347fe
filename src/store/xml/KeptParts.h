#pragma once

#include <QHash>
#include <QMap>
#include <map>

#include "store/StoredObject.h"

namespace store::xml {

/// Something of an attribute that is known here: written as long as the attribute is as it was.
struct KeptValue {
  StoredValue stored;
  std::optional<foundation::PropertyValue> insteadOf = {};  ///< none: the attribute is not known
};
struct KeptRelation {
  StoredRelation stored;
  ObjectId insteadOf = 0;  ///< what a known relation leads to here; 0 for none
};

/// What an object that is known here has beyond that. Sorted by key.
struct KeptParts {
  std::vector<KeptValue> values = {};
  std::vector<KeptRelation> relations = {};
  QByteArray attributes = {};
  QList<QByteArray> elements = {};
  [[nodiscard]] bool isEmpty() const {
    return values.empty() && relations.empty() && attributes.isEmpty() && elements.isEmpty();
  }
};

/// All that a store file held beyond what the objects in the context say.
struct KeptFromFile {
  int version = 0;  ///< 0 before a file was read
  QByteArray attributes = {};
  QList<QByteArray> elements = {};
  QMap<QByteArray, QByteArray> blocks = {};
  std::map<ObjectId, StoredObject> objects = {};  ///< of entities that are unknown here
  QHash<ObjectId, KeptParts> parts = {};
};

}  // namespace store::xml
