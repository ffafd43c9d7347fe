#include "store/ObjectContext.h"

namespace store {

/// One step of the history.
class ChangeCommand : public QUndoCommand {
 public:
  ChangeCommand(ObjectContext& context, JournalRecords records, const QString& name)
      : QUndoCommand(name), m_context(context), m_records(std::move(records)) {}

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
  JournalRecords m_records;
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
  m_pending.deleted.erase(&taken);
  m_pending.inserted.insert(&taken);
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
  if (m_replaying) return;
  m_changedUnrecorded = true;
  // Records of the history might speak of objects that are gone or not there yet.
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
    replay(records, Direction::Back);
  }
  m_journal.startSection();
  if (!m_steps.empty()) {
    if (m_steps.back().name.isEmpty()) m_steps.back().name = step.name;
    return;
  }
  if (!m_journal.isEmpty()) pushRecords(m_journal.takeFrom(0), step.name);
  processPendingChanges();
}

void ObjectContext::pushRecords(JournalRecords records, const QString& name) {
  if (!records.empty()) m_stack.push(new ChangeCommand(*this, std::move(records), name));
}

void ObjectContext::undo() {
  if (canUndo()) m_stack.undo();
}

void ObjectContext::redo() {
  if (canRedo()) m_stack.redo();
}

void ObjectContext::clearHistory() {
  m_changedUnrecorded = hasChanges();
  m_stack.clear();
}

void ObjectContext::replay(JournalRecords& records, Direction direction) {
  m_replaying = true;
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
  m_replaying = false;
  if (!isInStep()) processPendingChanges();
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
  while (!m_pending.isEmpty()) {
    const ChangeSet changes = std::exchange(m_pending, {});
    m_changeObservers.call(changes);
  }
  m_unrecordedRemovals.clear();
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

void UndoStep::cancel() {
  if (ObjectContext* context = std::exchange(m_context, nullptr)) context->endStep(true);
}

}  // namespace store
