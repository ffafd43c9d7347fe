#include "quartz/NodeKeys.h"

namespace quartz {

void NodeKeys::remove(const QString& key) {
  const auto found = m_counts.find(key);
  if (found == m_counts.end() || --found.value() > 0) return;
  m_counts.erase(found);
  const qsizetype separator = key.lastIndexOf(u'_');
  bool isNumber = false;
  const int number = QStringView(key).mid(separator + 1).toInt(&isNumber);
  if (separator < 0 || !isNumber) return;
  for (QHash<QString, int>* lowest : {&m_lowestFree, &m_lowestSuffix})
    if (const auto n = lowest->find(key.first(separator)); n != lowest->end())
      *n = std::min(*n, number);
}

QString NodeKeys::unusedKey(const QString& className) {
  int& n = m_lowestFree[className];
  n = std::max(n, 1);
  QString key;
  while (m_counts.contains(key = QStringLiteral("%1_%2").arg(className).arg(n))) ++n;
  return key;
}

QString NodeKeys::uniqueKey(const QString& wanted) {
  if (!m_counts.contains(wanted)) return wanted;
  int& n = m_lowestSuffix[wanted];
  n = std::max(n, 2);
  QString key;
  while (m_counts.contains(key = QStringLiteral("%1_%2").arg(wanted).arg(n))) ++n;
  return key;
}

}  // namespace quartz
