#pragma once

#include <QHash>
#include <QString>

namespace quartz {

/// The keys of a patch's nodes, so that thousands of nodes can be keyed without searching them all
/// for each. Keys may occur more than once (files and merges bring such).
class NodeKeys {
 public:
  void add(const QString& key) { ++m_counts[key]; }
  void remove(const QString& key);
  [[nodiscard]] bool contains(const QString& key) const { return m_counts.contains(key); }
  /// "CLASS_n" with the lowest n from 1 that no node has.
  [[nodiscard]] QString unusedKey(const QString& className);
  /// The wanted key, or "WANTED_n" with the lowest n from 2 that no node has.
  [[nodiscard]] QString uniqueKey(const QString& wanted);

 private:
  QHash<QString, int> m_counts;
  QHash<QString, int> m_lowestFree;    ///< class → no n below this one is free
  QHash<QString, int> m_lowestSuffix;  ///< wanted key → the same, from 2
};

}  // namespace quartz
