#pragma once

#include <QVariant>
#include <unordered_map>
#include <vector>

#include "store/ObjectContext.h"

namespace document {

/// What the recovery data knows of each object: the values as they were when it last looked. They
/// share their contents with the objects, so that a large value costs nothing and is recognised
/// without looking into it.
class ObjectShadow {
 public:
  /// Knows all objects as they are now.
  void take(const store::ObjectContext& context);
  void clear() { m_objects.clear(); }

  /// The payload of a step that makes the known state into that of the objects with these numbers,
  /// which is then known. Empty when nothing persistent differs.
  [[nodiscard]] QByteArray stepTo(const store::ObjectContext& context,
                                  const std::vector<store::ObjectId>& ids);

 private:
  struct Known {
    std::vector<QVariant> values;
    std::vector<store::ObjectId> related;
  };
  [[nodiscard]] static Known known(const store::ManagedObject& object);

  std::unordered_map<store::ObjectId, Known> m_objects;
};

}  // namespace document
