#pragma once

#include <QMap>
#include <QStringList>

#include "store/StoredObject.h"

namespace store::xml {

/// What is noticed while a store is read, in sentences for the person who opens it. What happens
/// many times is told once.
class StoreNotices {
 public:
  void newerVersion(int version, int current);
  void olderVersion(int version, int current);
  void unknownEntity(const QString& entity) { ++m_unknownEntities[entity]; }
  /// An attribute or relation; without key some other element.
  void unknownKey(const QString& entity, const QString& key) { ++m_unknownKeys[{entity, key}]; }
  void unknownElements(qsizetype count);
  void unreadable(const QString& entity, ObjectId id, const QString& key, size_t line);
  /// There is more to the value than this program can read.
  void notWhole(const QString& entity, ObjectId id, const QString& key, size_t line);
  void lostRelation(const QString& entity, ObjectId id, const StoredRelation& relation);

  [[nodiscard]] QStringList sentences() const;

 private:
  void add(const QString& sentence);

  QStringList m_general;
  QMap<QString, qsizetype> m_unknownEntities;
  QMap<std::pair<QString, QString>, qsizetype> m_unknownKeys;
  QStringList m_places;
  qsizetype m_furtherPlaces = 0;
};

}  // namespace store::xml
