#include "app/RecentDocuments.h"

#include <QFileInfo>

namespace app {

namespace {
const QString key = QStringLiteral("recentDocuments");
}

QStringList RecentDocuments::stored() const {
  return m_defaults.value(key).toStringList();
}

QStringList RecentDocuments::paths() const {
  QStringList paths = stored();
  paths.removeIf([](const QString& path) { return !QFileInfo::exists(path); });
  return paths;
}

void RecentDocuments::add(const QString& path) {
  QStringList paths = stored();
  paths.removeAll(path);
  paths.prepend(path);
  m_defaults.setValue(paths.mid(0, most), key);
}

void RecentDocuments::clear() {
  m_defaults.remove(key);
}

}  // namespace app
