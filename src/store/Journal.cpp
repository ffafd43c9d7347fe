#include "store/Journal.h"

namespace store {

namespace {

/// Properties and relations of an object, and its insertion, under one number each.
int slotOf(JournalRecord::Kind kind, int index) {
  if (kind == JournalRecord::Kind::Inserted) return -1;
  return kind == JournalRecord::Kind::Value ? 2 * index : 2 * index + 1;
}

/// Steps inside a step record a value again: one record with its first and last value says the
/// same. A new object keeps its values when its insertion is undone; they need none.
JournalRecords merged(JournalRecords records) {
  using Kind = JournalRecord::Kind;
  QHash<std::pair<const ManagedObject*, int>, size_t> places;
  JournalRecords result;
  result.reserve(records.size());
  for (JournalRecord& record : records) {
    if (record.kind == Kind::Inserted) places.insert({record.object, -1}, result.size());
    if (record.kind == Kind::Value) {
      if (places.contains({record.object, -1})) continue;
      const std::pair<const ManagedObject*, int> slot{record.object, record.index};
      if (const auto found = places.constFind(slot); found != places.cend()) {
        result[*found].after = std::move(record.after);
        continue;
      }
      places.insert(slot, result.size());
    }
    result.push_back(std::move(record));
  }
  std::erase_if(result, [](const JournalRecord& record) {
    return record.kind == Kind::Value && record.before == record.after;
  });
  return result;
}

}  // namespace

void Journal::recordValue(ManagedObject& object, int index, const QVariant& before,
                          const QVariant& after) {
  using Kind = JournalRecord::Kind;
  // A new object keeps its values when its insertion is undone; they need no record.
  if (sectionRecord(object, Kind::Inserted, 0)) return;
  if (JournalRecord* record = sectionRecord(object, Kind::Value, index)) {
    record->after = after;
    return;
  }
  remember(object, Kind::Value, index);
  m_records.push_back({Kind::Value, &object, index, before, after});
}

void Journal::recordRelation(ManagedObject& object, int index, ManagedObject* before,
                             ManagedObject* after) {
  // In order with insertions and removals, therefore never merged.
  m_records.push_back({JournalRecord::Kind::Relation, &object, index, {}, {}, before, after});
}

void Journal::recordInserted(ManagedObject& object) {
  remember(object, JournalRecord::Kind::Inserted, 0);
  m_records.push_back({JournalRecord::Kind::Inserted, &object});
}

void Journal::recordRemoved(std::unique_ptr<ManagedObject> object) {
  JournalRecord record{JournalRecord::Kind::Removed, object.get()};
  record.keeper = std::move(object);
  m_records.push_back(std::move(record));
}

void Journal::startSection() {
  m_section.clear();
}

JournalRecords Journal::takeFrom(size_t first) {
  m_section.clear();
  JournalRecords taken;
  const auto from = m_records.begin() + static_cast<std::ptrdiff_t>(first);
  std::move(from, m_records.end(), std::back_inserter(taken));
  m_records.erase(from, m_records.end());
  return merged(std::move(taken));
}

JournalRecord* Journal::sectionRecord(const ManagedObject& object, JournalRecord::Kind kind,
                                      int index) {
  const auto found = m_section.constFind({&object, slotOf(kind, index)});
  return found == m_section.cend() ? nullptr : &m_records[*found];
}

void Journal::remember(const ManagedObject& object, JournalRecord::Kind kind, int index) {
  m_section.insert({&object, slotOf(kind, index)}, m_records.size());
}

}  // namespace store
