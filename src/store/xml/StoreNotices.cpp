#include "store/xml/StoreNotices.h"

namespace store::xml {

namespace {

constexpr qsizetype mostSentences = 50;

QString place(const QString& entity, ObjectId id, const QString& key, size_t line) {
  return QStringLiteral("Line %1: \"%2\" of object %3 (%4)").arg(line).arg(key).arg(id).arg(entity);
}

QString objects(qsizetype count) {
  return count == 1 ? QStringLiteral("one object") : QStringLiteral("%1 objects").arg(count);
}

}  // namespace

void StoreNotices::newerVersion(int version, int current) {
  m_general.append(QStringLiteral("The document was saved by a newer version of this program (its "
                                  "data has version %1, known is %2). What is new in it is kept, "
                                  "but cannot be seen here.")
                       .arg(version)
                       .arg(current));
}

void StoreNotices::olderVersion(int version, int current) {
  m_general.append(QStringLiteral("The document's data had version %1 and was brought to version "
                                  "%2.")
                       .arg(version)
                       .arg(current));
}

void StoreNotices::unknownElements(qsizetype count) {
  m_general.append(
      QStringLiteral("Parts of the document's data that are unknown here are kept as they are "
                     "(%1).")
          .arg(count));
}

void StoreNotices::unreadable(const QString& entity, ObjectId id, const QString& key, size_t line) {
  add(place(entity, id, key, line) +
      QStringLiteral(" cannot be read. It has its default here; the file keeps what it says until "
                     "the value is changed."));
}

void StoreNotices::notWhole(const QString& entity, ObjectId id, const QString& key, size_t line) {
  add(place(entity, id, key, line) +
      QStringLiteral(" can be read only in part. The file keeps the rest until the value is "
                     "changed."));
}

void StoreNotices::lostRelation(const QString& entity, ObjectId id,
                                const StoredRelation& relation) {
  add(place(entity, id, relation.key, relation.line) +
      QStringLiteral(" leads to object %1, which is not there or of another kind, and is left out.")
          .arg(relation.to));
}

void StoreNotices::add(const QString& sentence) {
  if (m_places.size() < mostSentences)
    m_places.append(sentence);
  else
    ++m_furtherPlaces;
}

QStringList StoreNotices::sentences() const {
  QStringList sentences = m_general;
  for (auto it = m_unknownEntities.cbegin(); it != m_unknownEntities.cend(); ++it)
    sentences.append(QStringLiteral("The kind \"%1\" is unknown here: %2 kept as they are.")
                         .arg(it.key(), objects(it.value())));
  for (auto it = m_unknownKeys.cbegin(); it != m_unknownKeys.cend(); ++it) {
    const auto& [entity, key] = it.key();
    const QString what =
        key.isEmpty() ? QStringLiteral("Something") : QStringLiteral("\"%1\"").arg(key);
    sentences.append(QStringLiteral("%1 of the kind \"%2\" is unknown here and kept as it is (%3).")
                         .arg(what, entity, objects(it.value())));
  }
  sentences += m_places;
  qsizetype further = m_furtherPlaces;
  if (sentences.size() > 2 * mostSentences) {
    further += sentences.size() - 2 * mostSentences;
    sentences.resize(2 * mostSentences);
  }
  if (further > 0) sentences.append(QStringLiteral("There are %1 further notes.").arg(further));
  return sentences;
}

}  // namespace store::xml
