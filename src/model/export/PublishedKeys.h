#pragma once

#include <QHash>
#include <QSet>
#include <QString>

namespace model {

/// The keys published by one export, so that each is given once.
class PublishedKeys {
 public:
  struct Name {
    QString key;    ///< cleaned and unique
    QString label;  ///< the text that the key was cleaned from, with its counter
  };

  /// The wanted name, or the same with the separator and a counter from 1. Does not use it yet.
  [[nodiscard]] Name unusedName(const QString& wanted, const QString& separator);
  void use(const QString& key) { m_used.insert(key); }

 private:
  QSet<QString> m_used;
  /// Name with separator → all counters before this one are taken: many components of one title do
  /// not try them all over again.
  QHash<QString, int> m_counters;
};

}  // namespace model
