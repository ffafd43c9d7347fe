#pragma once

#include <QUndoStack>
#include <map>

#include "store/Journal.h"

namespace store {

/// What changed in one step: objects in the order in which they were made.
struct ChangeSet {
  ObjectSet inserted;
  ObjectSet updated;  ///< persistent values or relations changed; not those inserted
  /// Still valid while the observer runs.
  ObjectSet deleted;
  [[nodiscard]] bool isEmpty() const {
    return inserted.objects().empty() && updated.objects().empty() && deleted.objects().empty();
  }
};

/// An object as it was stored, before it is in a context.
struct FetchedObject {
  ObjectId id = 0;
  std::unique_ptr<ManagedObject> object;
  QList<std::pair<QString, ObjectId>> relations = {};  ///< to-one relations by key
};

/// Owns the objects of a document. Every change of a persistent value, every insertion and removal
/// goes through it: it is recorded once, and undo, redo, announcements and the unsaved mark follow
/// from the record. Changes outside an UndoStep are steps of their own. Not thread-safe.
class ObjectContext {
 public:
  ObjectContext();
  ~ObjectContext();
  ObjectContext(const ObjectContext&) = delete;
  ObjectContext& operator=(const ObjectContext&) = delete;

  /// Takes the new object in and wakes it.
  template <typename T>
  T* insert(std::unique_ptr<T> object) {
    T* inserted = object.get();
    insertObject(std::move(object));
    return inserted;
  }
  /// Removes the object, and what its delete rules take along. It lives on in the journal as long
  /// as undo can bring it back; pointers to it stay good for comparing only.
  void remove(ManagedObject& object);

  /// Takes in what was loaded from a store, relates it and wakes it. Nothing of that is recorded or
  /// counts as a change. Numbers must be unique and new here; relations to unknown numbers, and to
  /// objects without the inverse relation, are left out.
  void takeFetched(std::vector<FetchedObject> objects);
  /// New objects get numbers above this one: those up to it are in use elsewhere.
  void keepNumbersUpTo(ObjectId last) { m_lastId = std::max(m_lastId, last); }

  /// By their numbers, that is in the order in which they were made.
  [[nodiscard]] const std::map<ObjectId, std::unique_ptr<ManagedObject>>& objects() const {
    return m_objects;
  }
  /// None when there is no such object.
  [[nodiscard]] ManagedObject* objectWithId(ObjectId id) const;

  /// Nothing happens while a step is open, nor inside an observer that is told of an undo. What
  /// observers change then is not recorded: the history already holds what follows from what.
  void undo();
  void redo();
  [[nodiscard]] bool canUndo() const { return isAtRest() && m_stack.canUndo(); }
  [[nodiscard]] bool canRedo() const { return isAtRest() && m_stack.canRedo(); }
  /// The steps with their names, for menus and lists; use undo() and redo() to move in it.
  [[nodiscard]] const QUndoStack& history() const { return m_stack; }
  void clearHistory();
  [[nodiscard]] bool isInStep() const { return !m_steps.empty(); }
  [[nodiscard]] bool isUndoRegistrationEnabled() const { return m_suspensions == 0; }

  /// Whether there is a persistent change since the last markSaved().
  [[nodiscard]] bool hasChanges() const;
  void markSaved();
  /// Counts as changed until markSaved(), as what was recovered does.
  void markChanged() { m_changedUnrecorded = true; }

  /// One call for each step that changed persistent values, when it ends, and after undo and redo.
  [[nodiscard]] Subscription observeChanges(std::function<void(const ChangeSet&)> observer) {
    return m_changeObservers.add(std::move(observer));
  }
  /// Tells the change observers now what an open step has changed so far.
  void processPendingChanges();

 private:
  friend class ManagedObject;
  friend class UndoStep;
  friend class UndoSuspension;
  friend class ChangeCommand;
  struct Announcement {
    ManagedObject* object;
    QString key;
    QVariant before = {};
    QVariant after = {};
  };
  class ImplicitStep;
  struct OpenStep {
    QString name;
    size_t firstRecord;
    bool continues = false;
  };
  using Announcements = std::vector<Announcement>;
  enum class Direction { Back, Forth };

  void insertObject(std::unique_ptr<ManagedObject> object);
  /// Records changes of transient values only when told to.
  void changeValue(ManagedObject& object, int index, QVariant value, bool alwaysRecord);
  void changeRelation(ManagedObject& object, int index, ManagedObject* related);
  void removeCascading(ManagedObject& object, Announcements& announcements);
  void relate(ManagedObject& object, int index, ManagedObject* related,
              Announcements& announcements);
  void takeIn(std::unique_ptr<ManagedObject> object);
  [[nodiscard]] std::unique_ptr<ManagedObject> takeOut(ManagedObject& object);

  void beginStep(const QString& name);
  void endStep(bool cancelled);
  void pushRecords(JournalRecords records, const QString& name, bool continues);
  [[nodiscard]] bool isRecording() const { return m_suspensions == 0 && !m_replaying; }
  [[nodiscard]] bool isAtRest() const { return !isInStep() && !m_replaying && !m_historyBroken; }
  void structureChangesUnrecorded();
  void dropBrokenHistory();

  void replay(JournalRecords& records, Direction direction);
  void replayRecord(JournalRecord& record, Direction direction, Announcements& announcements);
  void announce(const Announcement& announcement);
  void announceAll(const Announcements& announcements);
  void markUpdated(ManagedObject& object);

  std::map<ObjectId, std::unique_ptr<ManagedObject>> m_objects;
  ObjectId m_lastId = 0;
  std::vector<OpenStep> m_steps;
  Journal m_journal;
  int m_suspensions = 0;
  bool m_replaying = false;
  bool m_historyBroken = false;  ///< its records speak of objects that are gone, or not there yet
  bool m_changedUnrecorded = false;
  ChangeSet m_pending;
  std::vector<std::unique_ptr<ManagedObject>> m_unrecordedRemovals;  ///< until observers were told
  ObserverList<ChangeSet> m_changeObservers;
  QUndoStack m_stack;  // before everything that its records point to is gone
};

/// Groups the changes during its life into one undo step with a name that menus show. Steps nest:
/// the outermost with a name names the whole. A step without changes leaves nothing behind.
class UndoStep {
 public:
  explicit UndoStep(ObjectContext& context, const QString& name = {});
  ~UndoStep();
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;
  /// Takes back what was changed since the step was opened.
  void cancel();
  /// Makes it one with the step before, if that is the last one of the history, has the same name
  /// and nothing was saved in between. For the outermost step.
  void continuePrevious();

 private:
  ObjectContext* m_context;
};

/// Changes during its life are not recorded for undo. Values only, as a rule: taking objects in or
/// out unrecorded ends the history, the open step's part of it included, since its records could no
/// longer be replayed. Nests.
class UndoSuspension {
 public:
  explicit UndoSuspension(ObjectContext& context) : m_context(context) {
    ++m_context.m_suspensions;
  }
  ~UndoSuspension() { --m_context.m_suspensions; }
  UndoSuspension(const UndoSuspension&) = delete;
  UndoSuspension& operator=(const UndoSuspension&) = delete;

 private:
  ObjectContext& m_context;
};

}  // namespace store
