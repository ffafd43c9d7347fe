#pragma once

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
  [[nodiscard]] Name unusedName(const QString& wanted, const QString& separator) const;
  void use(const QString& key) { m_used.insert(key); }

 private:
  QSet<QString> m_used;
};

}  // namespace model
