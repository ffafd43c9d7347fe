#include "quartz/NodeKeys.h"

namespace quartz {

void NodeKeys::remove(const QString& key) {
  const auto found = m_counts.find(key);
  if (found == m_counts.end() || --found.value() > 0) return;
  m_counts.erase(found);
  m_lowestFree.clear();
}

QString NodeKeys::unusedKey(const QString& className) {
  int& n = m_lowestFree[className];
  n = std::max(n, 1);
  QString key;
  while (m_counts.contains(key = QStringLiteral("%1_%2").arg(className).arg(n))) ++n;
  return key;
}

}  // namespace quartz
