#pragma once

#include <QHash>

#include "store/ManagedObject.h"

namespace store {

/// One recorded change, with what was before and what is after: replaying it needs nothing else.
struct JournalRecord {
  enum class Kind { Value, Relation, Inserted, Removed };
  Kind kind;
  ManagedObject* object;
  int index = -1;  ///< of the property or to-one relation
  QVariant before = {};
  QVariant after = {};
  ManagedObject* relatedBefore = nullptr;
  ManagedObject* relatedAfter = nullptr;
  std::unique_ptr<ManagedObject> keeper = {};  ///< the object itself while it is in no context
};
using JournalRecords = std::vector<JournalRecord>;

/// The records of the changes that belong to one undo step while it is open. Repeated changes of
/// one value are kept as one record, so a long drag stays as small as its result.
class Journal {
 public:
  [[nodiscard]] bool isEmpty() const { return m_records.empty(); }
  [[nodiscard]] size_t size() const { return m_records.size(); }

  void recordValue(ManagedObject& object, int index, const QVariant& before, const QVariant& after);
  void recordRelation(ManagedObject& object, int index, ManagedObject* before,
                      ManagedObject* after);
  void recordInserted(ManagedObject& object);
  void recordRemoved(std::unique_ptr<ManagedObject> object);

  /// Changes from here on can be taken back on their own; records before stay as they are.
  void startSection();
  /// Takes the records from that one on, for the step or for rolling it back: one a value.
  [[nodiscard]] JournalRecords takeFrom(size_t first);

 private:
  [[nodiscard]] JournalRecord* sectionRecord(const ManagedObject& object, JournalRecord::Kind kind,
                                             int index);
  void remember(const ManagedObject& object, JournalRecord::Kind kind, int index);

  JournalRecords m_records;
  QHash<std::pair<const ManagedObject*, int>, size_t> m_section;  ///< records of this section
};

}  // namespace store
