#pragma once

#include <QHash>
#include <QList>
#include <functional>
#include <vector>

#include "store/ValueCodec.h"

namespace store {

class ManagedObject;

enum class Persistence { Persistent, Transient };
enum class DeleteRule {
  Nullify,  ///< the objects at the other end stay
  Cascade   ///< they are removed together with this one
};

/// Handles by which a class reaches its own declared properties and relations.
template <typename T>
struct Property {
  int index = -1;
};
template <typename T>
struct ToOne {
  int index = -1;
};
template <typename T>
struct ToMany {
  int index = -1;
};

struct PropertyDescription {
  QString key;
  QVariant defaultValue;
  Persistence persistence = Persistence::Persistent;
  const ValueCodec* codec = nullptr;  ///< none for transient properties
};
struct ToOneDescription {
  QString key;
  QString inverseKey;  ///< the to-many relation at the other end
};
struct ToManyDescription {
  QString key;
  DeleteRule deleteRule = DeleteRule::Nullify;
};
/// A key whose value follows from others: announced with them, read through the function.
struct DerivedDescription {
  QString key;
  std::function<QVariant(const ManagedObject&)> read;
};

/// The declaration of a kind of persistent objects: properties with type and default, relations
/// with their delete rules, derived keys. A class derives one structure from this one (or from that
/// of its base class), whose members are the handles, and keeps a single instance of it.
class Entity {
 public:
  explicit Entity(QString name) : m_name(std::move(name)) {}
  Entity(const Entity&) = delete;
  Entity& operator=(const Entity&) = delete;

  [[nodiscard]] const QString& name() const { return m_name; }
  [[nodiscard]] const std::vector<PropertyDescription>& properties() const { return m_properties; }
  [[nodiscard]] const std::vector<ToOneDescription>& toOnes() const { return m_toOnes; }
  [[nodiscard]] const std::vector<ToManyDescription>& toManys() const { return m_toManys; }
  /// -1 when there is none of that key.
  [[nodiscard]] int propertyIndex(const QString& key) const {
    return m_propertyByKey.value(key, -1);
  }
  [[nodiscard]] int toOneIndex(const QString& key) const { return m_toOneByKey.value(key, -1); }
  [[nodiscard]] int toManyIndex(const QString& key) const { return m_toManyByKey.value(key, -1); }
  /// None when the key is not derived.
  [[nodiscard]] const DerivedDescription* derived(const QString& key) const;
  /// Keys to announce along with this one, those that depend on them included.
  [[nodiscard]] const QStringList& dependents(const QString& key) const;

 protected:
  /// For the name of a derived entity.
  void setName(const QString& name) { m_name = name; }

  template <typename T>
  Property<T> property(const char* key, T defaultValue = {},
                       Persistence persistence = Persistence::Persistent) {
    const ValueCodec* codec = nullptr;
    if (persistence == Persistence::Persistent) codec = &codecOf<T>();
    return {addProperty({QString::fromLatin1(key), QVariant::fromValue(std::move(defaultValue)),
                         persistence, codec})};
  }
  /// Neither saved nor undone; observed like the others. Its type needs no codec.
  template <typename T>
  Property<T> transient(const char* key, T defaultValue = {}) {
    return {addProperty({QString::fromLatin1(key), QVariant::fromValue(std::move(defaultValue)),
                         Persistence::Transient, nullptr})};
  }
  template <typename T>
  ToOne<T> toOne(const char* key, const char* inverseKey) {
    return {addToOne({QString::fromLatin1(key), QString::fromLatin1(inverseKey)})};
  }
  template <typename T>
  ToMany<T> toMany(const char* key, DeleteRule deleteRule) {
    return {addToMany({QString::fromLatin1(key), deleteRule})};
  }
  /// A key that follows from other keys of the same object.
  void derive(const char* key, std::initializer_list<const char*> from,
              std::function<QVariant(const ManagedObject&)> read = {});
  /// Announces the key, whatever it is, together with others.
  void announceAlong(const char* key, std::initializer_list<const char*> with);

 private:
  int addProperty(PropertyDescription description);
  int addToOne(ToOneDescription description);
  int addToMany(ToManyDescription description);

  QString m_name;
  std::vector<PropertyDescription> m_properties;
  std::vector<ToOneDescription> m_toOnes;
  std::vector<ToManyDescription> m_toManys;
  std::vector<DerivedDescription> m_derived;
  QHash<QString, int> m_propertyByKey;
  QHash<QString, int> m_toOneByKey;
  QHash<QString, int> m_toManyByKey;
  QHash<QString, QStringList> m_dependents;
};

}  // namespace store
