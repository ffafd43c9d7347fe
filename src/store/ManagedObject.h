#pragma once

#include <map>

#include "store/Entity.h"
#include "store/ObjectSet.h"
#include "store/Observation.h"

namespace store {

class ObjectContext;
using ObjectId = quint64;

/// An object whose declared properties and relations live in an object context, which records every
/// change for undo and tells observers. Outside a context (before it is inserted, after it was
/// removed) values can be set freely and nothing is recorded; relations need a context.
class ManagedObject {
 public:
  /// The entity must outlive the object.
  explicit ManagedObject(const Entity& entity);
  virtual ~ManagedObject();
  ManagedObject(const ManagedObject&) = delete;
  ManagedObject& operator=(const ManagedObject&) = delete;

  [[nodiscard]] const Entity& entity() const { return m_entity; }
  /// Unique in its context and kept for good; 0 before the object was inserted.
  [[nodiscard]] ObjectId objectId() const { return m_id; }
  /// None while the object is in no context.
  [[nodiscard]] ObjectContext* context() const { return m_context; }

  /// A property, a related object (ManagedObject*), a to-many relation (QList<ManagedObject*>) or a
  /// derived value; else what the class makes of the key; invalid when it knows nothing of it.
  [[nodiscard]] QVariant valueForKey(const QString& key) const;
  /// False when the key is not known or the value does not fit.
  bool setValueForKey(const QVariant& value, const QString& key);

  /// Calls back after every change of the key's value, by whatever way it came, undo included.
  [[nodiscard]] Subscription observe(const QString& key, Observer observer);
  /// Follows to-one relations, as in "composition.duration"; the last key's announcements arrive,
  /// and one whenever a relation on the way leads elsewhere.
  [[nodiscard]] Subscription observeKeyPath(const QString& keyPath, Observer observer);
  /// Tells observers of the key, and of those that follow from it, that its value is another one
  /// now. For values that no declared property stands behind.
  void announce(const QString& key);

  /// The persistent property as it is stored; null for unknown and transient keys.
  [[nodiscard]] foundation::PropertyValue storedValue(const QString& key) const;
  /// False when there is no such persistent property.
  bool setStoredValue(const foundation::PropertyValue& stored, const QString& key);
  /// Relates the object to another one of its context, or to none. False when there is no such
  /// to-one relation, or the other object has no inverse of it.
  bool setStoredRelation(ManagedObject* related, const QString& key);

  /// The property with that index of the entity, as it is in memory.
  [[nodiscard]] const QVariant& propertyValue(size_t index) const { return m_values[index]; }
  /// The object at the other end of the to-one relation with that index of the entity.
  [[nodiscard]] const ManagedObject* relatedObject(size_t index) const { return m_toOnes[index]; }

 protected:
  template <typename T>
  [[nodiscard]] const T& get(Property<T> property) const {
    return *static_cast<const T*>(m_values[static_cast<size_t>(property.index)].constData());
  }
  template <typename T>
  void set(Property<T> property, T value) {
    if (!(get(property) == value))
      setPropertyValue(property.index, QVariant::fromValue(std::move(value)));
  }
  /// Sets a transient property so that undo and redo set it too, as part of a step that does more.
  template <typename T>
  void setAlong(Property<T> property, T value) {
    if (!(get(property) == value))
      setPropertyValue(property.index, QVariant::fromValue(std::move(value)), Recorded::Always);
  }
  template <typename T>
  [[nodiscard]] T* get(ToOne<T> relation) const {
    return static_cast<T*>(m_toOnes[static_cast<size_t>(relation.index)]);
  }
  template <typename T>
  void set(ToOne<T> relation, T* object) {
    setRelated(relation.index, object);
  }
  template <typename T>
  [[nodiscard]] ObjectsOf<T> get(ToMany<T> relation) const {
    return ObjectsOf<T>(m_toManys[static_cast<size_t>(relation.index)]);
  }

  /// Called once, when a new object was inserted; and once when it was loaded from a store.
  virtual void awakeFromInsert() {}
  virtual void awakeFromFetch() {}
  /// Called after undo or redo changed the object or brought it back.
  virtual void awakeFromReplay() {}
  /// Called after the object left its context, to let go of what can be made again.
  virtual void didLeaveContext() {}
  /// Called for every change of a property or relation, undo and redo included, before observers
  /// are. Must not change persistent values.
  virtual void valueDidChange(const QString& key) { Q_UNUSED(key) }
  [[nodiscard]] virtual QVariant valueForUndefinedKey(const QString& key) const;
  virtual bool setValueForUndefinedKey(const QVariant& value, const QString& key);

 private:
  friend class ObjectContext;
  friend class Journal;
  enum class Recorded { WhenPersistent, Always };
  void setPropertyValue(int index, QVariant value, Recorded recorded = Recorded::WhenPersistent);
  void setRelated(int index, ManagedObject* object);
  void callObservers(const Change& change);

  const Entity& m_entity;
  ObjectContext* m_context = nullptr;
  ObjectId m_id = 0;
  std::vector<QVariant> m_values;
  std::vector<ManagedObject*> m_toOnes;
  std::vector<ObjectSet> m_toManys;
  std::unique_ptr<std::map<QString, ObserverList<Change>>> m_observers;
};

}  // namespace store

Q_DECLARE_METATYPE(store::ManagedObject*)
