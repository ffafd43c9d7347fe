#pragma once

#include <vector>

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"
#include "foundation/archive/ArchiveValue.h"

namespace foundation::detail {

/// Follows the references of a keyed archive from its root.
class KeyedArchiveReader {
 public:
  explicit KeyedArchiveReader(const PropertyDictionary& archive);
  [[nodiscard]] Result<ArchiveValue> read(const QString& fileName);

 private:
  ArchiveValue value(const PropertyValue& stored);
  ArchiveValue referenced(quint64 index);
  ArchiveValue instance(const PropertyDictionary& fields);
  ArchiveValue dictionary(const PropertyDictionary& fields);
  ArchiveValue image(const PropertyDictionary& fields);
  ArchiveValue object(const QString& className, const PropertyDictionary& fields);
  ArchiveArray array(const PropertyValue& stored);
  ArchiveDictionary plainDictionary(const PropertyDictionary& fields);
  QString className(const PropertyDictionary& fields) const;
  bool enter();
  void fail(const QString& reason);

  const PropertyDictionary& m_archive;
  const PropertyArray& m_objects;
  std::vector<bool> m_open;  // objects on the path to the one at hand
  int m_depth = 0;
  int m_budget;
  QString m_problem;
};

}  // namespace foundation::detail
