#include "store/ObjectContext.h"

namespace store {

/// One step of the history.
class ChangeCommand : public QUndoCommand {
 public:
  ChangeCommand(ObjectContext& context, JournalRecords records, const QString& name, bool continues)
      : QUndoCommand(name),
        m_context(context),
        m_records(std::move(records)),
        m_continues(continues) {}

  [[nodiscard]] int id() const override { return 1; }  // all may be merged
  bool mergeWith(const QUndoCommand* next) override {
    const auto* other = static_cast<const ChangeCommand*>(next);
    if (!other->m_continues || other->text() != text()) return false;
    std::move(other->m_records.begin(), other->m_records.end(), std::back_inserter(m_records));
    return true;
  }

  void undo() override { m_context.replay(m_records, ObjectContext::Direction::Back); }
  void redo() override {
    // The history calls this when the step is added; then everything has happened already.
    if (m_fresh)
      m_fresh = false;
    else
      m_context.replay(m_records, ObjectContext::Direction::Forth);
  }

 private:
  ObjectContext& m_context;
  mutable JournalRecords m_records;  // of one that is merged, which ends with that
  bool m_continues;
  bool m_fresh = true;
};

/// A change outside a step is a step of its own, together with what observers make of it.
class ObjectContext::ImplicitStep {
 public:
  explicit ImplicitStep(ObjectContext& context) {
    if (!context.isInStep() && !context.m_replaying) m_step.emplace(context);
  }

 private:
  std::optional<UndoStep> m_step;
};

ObjectContext::ObjectContext() = default;

ObjectContext::~ObjectContext() {
  m_stack.clear();
  // Nobody is told about the end; objects that observe each other go in any order.
}

ManagedObject* ObjectContext::objectWithId(ObjectId id) const {
  const auto found = m_objects.find(id);
  return found == m_objects.end() ? nullptr : found->second.get();
}

void ObjectContext::insertObject(std::unique_ptr<ManagedObject> object) {
  const ImplicitStep step(*this);
  ManagedObject& inserted = *object;
  inserted.m_id = ++m_lastId;
  takeIn(std::move(object));
  if (isRecording())
    m_journal.recordInserted(inserted);
  else
    structureChangesUnrecorded();
  inserted.awakeFromInsert();
}

void ObjectContext::takeFetched(std::vector<FetchedObject> objects) {
  const bool hadChanges = hasChanges();
  {
    const UndoSuspension suspension(*this);
    std::vector<ManagedObject*> fetched;
    for (FetchedObject& entry : objects) {
      entry.object->m_id = entry.id;
      m_lastId = std::max(m_lastId, entry.id);
      fetched.push_back(entry.object.get());
      takeIn(std::move(entry.object));
    }
    Announcements nobodyLooksYet;
    for (size_t i = 0; i < objects.size(); ++i)
      for (const auto& [key, id] : objects[i].relations) {
        const int index = fetched[i]->m_entity.toOneIndex(key);
        ManagedObject* related = objectWithId(id);
        if (index < 0 || !related) continue;
        const QString& inverse =
            fetched[i]->m_entity.toOnes()[static_cast<size_t>(index)].inverseKey;
        if (related->m_entity.toManyIndex(inverse) >= 0)
          relate(*fetched[i], index, related, nobodyLooksYet);
      }
    for (ManagedObject* object : fetched) object->awakeFromFetch();
  }
  processPendingChanges();
  if (!hadChanges) markSaved();
}

void ObjectContext::changeValue(ManagedObject& object, int index, QVariant value,
                                bool alwaysRecord) {
  const ImplicitStep step(*this);
  const auto slot = static_cast<size_t>(index);
  const PropertyDescription& property = object.m_entity.properties()[slot];
  const QVariant before = std::exchange(object.m_values[slot], value);
  const bool isPersistent = property.persistence == Persistence::Persistent;
  if (isRecording() && (isPersistent || alwaysRecord))
    m_journal.recordValue(object, index, before, value);
  else if (isPersistent && !m_replaying)
    m_changedUnrecorded = true;
  if (isPersistent) markUpdated(object);
  announce({&object, property.key, before, std::move(value)});
}

void ObjectContext::changeRelation(ManagedObject& object, int index, ManagedObject* related) {
  const ImplicitStep step(*this);
  ManagedObject* before = object.m_toOnes[static_cast<size_t>(index)];
  Announcements announcements;
  relate(object, index, related, announcements);
  if (isRecording())
    m_journal.recordRelation(object, index, before, related);
  else
    structureChangesUnrecorded();
  announceAll(announcements);
}

void ObjectContext::relate(ManagedObject& object, int index, ManagedObject* related,
                           Announcements& announcements) {
  const ToOneDescription& relation = object.m_entity.toOnes()[static_cast<size_t>(index)];
  ManagedObject*& end = object.m_toOnes[static_cast<size_t>(index)];
  const auto inverseOf = [&](ManagedObject& other) -> ObjectSet& {
    const int inverse = other.m_entity.toManyIndex(relation.inverseKey);
    Q_ASSERT_X(inverse >= 0, "ObjectContext", "the relation has no inverse");
    markUpdated(other);
    announcements.push_back({&other, relation.inverseKey});
    return other.m_toManys[static_cast<size_t>(inverse)];
  };
  markUpdated(object);
  announcements.push_back(
      {&object, relation.key, QVariant::fromValue(end), QVariant::fromValue(related)});
  if (end) inverseOf(*end).erase(&object);
  end = related;
  if (related) inverseOf(*related).insert(&object);
}

void ObjectContext::remove(ManagedObject& object) {
  if (object.m_context != this) return;
  const ImplicitStep step(*this);
  Announcements announcements;
  removeCascading(object, announcements);
  announceAll(announcements);
}

void ObjectContext::removeCascading(ManagedObject& object, Announcements& announcements) {
  const auto unrelate = [&](ManagedObject& from, int index) {
    ManagedObject* before = from.m_toOnes[static_cast<size_t>(index)];
    if (!before) return;
    relate(from, index, nullptr, announcements);
    if (isRecording()) m_journal.recordRelation(from, index, before, nullptr);
  };
  for (size_t i = 0; i < object.m_toManys.size(); ++i) {
    const ToManyDescription& relation = object.m_entity.toManys()[i];
    const std::vector<ManagedObject*> others = object.m_toManys[i].objects();
    for (ManagedObject* other : others) {
      if (relation.deleteRule == DeleteRule::Cascade) {
        removeCascading(*other, announcements);
        continue;
      }
      const auto& toOnes = other->m_entity.toOnes();
      for (size_t k = 0; k < toOnes.size(); ++k)
        if (toOnes[k].inverseKey == relation.key && other->m_toOnes[k] == &object)
          unrelate(*other, static_cast<int>(k));
    }
  }
  for (size_t i = 0; i < object.m_toOnes.size(); ++i) unrelate(object, static_cast<int>(i));

  std::unique_ptr<ManagedObject> taken = takeOut(object);
  if (isRecording()) {
    m_journal.recordRemoved(std::move(taken));
  } else {
    m_unrecordedRemovals.push_back(std::move(taken));
    structureChangesUnrecorded();
  }
}

void ObjectContext::takeIn(std::unique_ptr<ManagedObject> object) {
  ManagedObject& taken = *object;
  taken.m_context = this;
  m_objects.emplace(taken.m_id, std::move(object));
  if (m_pending.deleted.contains(&taken)) {  // observers were not told that it was gone
    m_pending.deleted.erase(&taken);
    m_pending.updated.insert(&taken);
  } else {
    m_pending.inserted.insert(&taken);
  }
}

std::unique_ptr<ManagedObject> ObjectContext::takeOut(ManagedObject& object) {
  auto node = m_objects.extract(object.m_id);
  object.m_context = nullptr;
  if (m_pending.inserted.contains(&object))
    m_pending.inserted.erase(&object);
  else
    m_pending.deleted.insert(&object);
  m_pending.updated.erase(&object);
  object.didLeaveContext();
  return std::move(node.mapped());
}

void ObjectContext::structureChangesUnrecorded() {
  m_changedUnrecorded = true;
  m_historyBroken = true;  // dropped when nothing is under way in it any more
}

void ObjectContext::dropBrokenHistory() {
  if (!std::exchange(m_historyBroken, false)) return;
  if (m_stack.count() > 0) m_stack.clear();
}

void ObjectContext::beginStep(const QString& name) {
  m_journal.startSection();
  m_steps.push_back({name, m_journal.size()});
}

void ObjectContext::endStep(bool cancelled) {
  const OpenStep step = m_steps.back();
  m_steps.pop_back();
  if (cancelled) {
    JournalRecords records = m_journal.takeFrom(step.firstRecord);
    if (!m_historyBroken) replay(records, Direction::Back);
    for (JournalRecord& record : records)
      if (record.keeper) m_unrecordedRemovals.push_back(std::move(record.keeper));
  }
  m_journal.startSection();
  if (!m_steps.empty()) {
    if (m_steps.back().name.isEmpty()) m_steps.back().name = step.name;
    return;
  }
  if (m_replaying) return;  // an observer's step
  JournalRecords records = m_journal.takeFrom(0);
  if (!m_historyBroken) pushRecords(std::exchange(records, {}), step.name, step.continues);
  processPendingChanges();
  dropBrokenHistory();
}

void ObjectContext::pushRecords(JournalRecords records, const QString& name, bool continues) {
  if (!records.empty()) m_stack.push(new ChangeCommand(*this, std::move(records), name, continues));
}

void ObjectContext::undo() {
  if (!canUndo()) return;
  m_stack.undo();
  // Only now may what observers change become steps: the history has moved.
  processPendingChanges();
  dropBrokenHistory();
}

void ObjectContext::redo() {
  if (!canRedo()) return;
  m_stack.redo();
  processPendingChanges();
  dropBrokenHistory();
}

void ObjectContext::clearHistory() {
  m_changedUnrecorded = hasChanges();
  if (m_replaying)
    m_historyBroken = true;  // the step that is being undone is still needed
  else
    m_stack.clear();
}

void ObjectContext::replay(JournalRecords& records, Direction direction) {
  const bool wasReplaying = std::exchange(m_replaying, true);
  Announcements announcements;
  if (direction == Direction::Back)
    for (auto it = records.rbegin(); it != records.rend(); ++it)
      replayRecord(*it, direction, announcements);
  else
    for (JournalRecord& record : records) replayRecord(record, direction, announcements);
  // Everything is in place before anybody is told.
  ObjectSet touched;
  for (const Announcement& announcement : announcements)
    if (announcement.object->m_context) touched.insert(announcement.object);
  for (ManagedObject* object : touched.objects()) object->awakeFromReplay();
  announceAll(announcements);
  m_replaying = wasReplaying;
}

void ObjectContext::replayRecord(JournalRecord& record, Direction direction,
                                 Announcements& announcements) {
  using Kind = JournalRecord::Kind;
  const bool back = direction == Direction::Back;
  ManagedObject& object = *record.object;
  switch (record.kind) {
    case Kind::Value: {
      const auto slot = static_cast<size_t>(record.index);
      const QVariant& target = back ? record.before : record.after;
      const PropertyDescription& property = object.m_entity.properties()[slot];
      const QVariant previous = std::exchange(object.m_values[slot], target);
      if (property.persistence == Persistence::Persistent) markUpdated(object);
      announcements.push_back({&object, property.key, previous, target});
      return;
    }
    case Kind::Relation:
      relate(object, record.index, back ? record.relatedBefore : record.relatedAfter,
             announcements);
      return;
    case Kind::Inserted:
    case Kind::Removed:
      if ((record.kind == Kind::Inserted) == back)
        record.keeper = takeOut(object);
      else
        takeIn(std::move(record.keeper));
      announcements.push_back({&object, {}});
      return;
  }
}

void ObjectContext::announce(const Announcement& announcement) {
  ManagedObject& object = *announcement.object;
  if (!object.m_context || announcement.key.isEmpty()) return;
  object.valueDidChange(announcement.key);
  object.callObservers({&object, announcement.key, announcement.before, announcement.after});
  for (const QString& dependent : object.m_entity.dependents(announcement.key))
    object.callObservers({&object, dependent, {}, {}});
}

void ObjectContext::announceAll(const Announcements& announcements) {
  for (const Announcement& announcement : announcements) announce(announcement);
}

void ObjectContext::markUpdated(ManagedObject& object) {
  if (object.m_context && !m_pending.inserted.contains(&object)) m_pending.updated.insert(&object);
}

void ObjectContext::processPendingChanges() {
  std::vector<std::unique_ptr<ManagedObject>> removed;  // alive until all were told
  if (!isInStep() && !m_replaying) removed.swap(m_unrecordedRemovals);
  while (!m_pending.isEmpty()) {
    const ChangeSet changes = std::exchange(m_pending, {});
    m_changeObservers.call(changes);
  }
}

bool ObjectContext::hasChanges() const {
  return m_changedUnrecorded || !m_stack.isClean() || !m_journal.isEmpty();
}

void ObjectContext::markSaved() {
  m_changedUnrecorded = false;
  m_stack.setClean();
}

UndoStep::UndoStep(ObjectContext& context, const QString& name) : m_context(&context) {
  context.beginStep(name);
}

UndoStep::~UndoStep() {
  if (m_context) m_context->endStep(false);
}

void UndoStep::continuePrevious() {
  if (m_context) m_context->m_steps.back().continues = true;
}

void UndoStep::cancel() {
  if (ObjectContext* context = std::exchange(m_context, nullptr)) context->endStep(true);
}

}  // namespace store
