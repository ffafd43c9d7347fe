#include "document/PackageLayout.h"

#include <QDir>
#include <QFileInfo>

namespace document {

using foundation::failure;
using foundation::Result;

PackageLayout::PackageLayout(QString folder) : m_folder(std::move(folder)) {
  while (m_folder.size() > 1 && m_folder.endsWith(u'/')) m_folder.chop(1);
}

QString PackageLayout::path(const char* entry) const {
  return m_folder + u'/' + QLatin1String(entry);
}

bool PackageLayout::isPackageName(const QString& path) {
  return QFileInfo(PackageLayout(path).folder())
             .suffix()
             .compare(extension(), Qt::CaseInsensitive) == 0;
}

Result<PackageLayout> PackageLayout::around(const QString& path) {
  const QFileInfo given(path);
  if (!given.exists()) return failure(QStringLiteral("does not exist"), path);
  if (given.isDir()) return PackageLayout(path);
  // A file may lie in a folder of the package, as the thumbnail does.
  for (QDir folder = given.absoluteDir();;) {
    if (isPackageName(folder.path()) || folder.exists(QStringLiteral("data.xml")))
      return PackageLayout(folder.path());
    if (folder.isRoot() || !folder.cdUp()) break;
  }
  return failure(QStringLiteral("is not in a composition document"), path);
}

QString PackageLayout::resolved(const QString& path) {
  const QFileInfo info(QDir::cleanPath(path));
  if (info.exists()) return info.canonicalFilePath();
  const QString around = QFileInfo(info.absolutePath()).canonicalFilePath();
  return around.isEmpty() ? info.absoluteFilePath() : QDir(around).filePath(info.fileName());
}

bool PackageLayout::isSamePlace(const QString& path, const QString& other) {
  return !path.isEmpty() && !other.isEmpty() && resolved(path) == resolved(other);
}

bool PackageLayout::isReplaceable(const QString& folder) {
  return QFileInfo::exists(PackageLayout(folder).store()) || QDir(folder).isEmpty();
}

QStringList PackageLayout::otherEntries() const {
  QStringList entries =
      QDir(m_folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  for (const QString& own : {store(), composition(), info(), quickLook(), values()}) {
    const QString name = QFileInfo(own).fileName();
    if (own != values()) entries.removeAll(name);
    // What a save that was interrupted left behind ends in six letters.
    static constexpr qsizetype leftOverEnding = 7;
    entries.removeIf([&](const QString& entry) {
      return entry.startsWith(name + u'.') && entry.size() == name.size() + leftOverEnding;
    });
  }
  return entries;
}

}  // namespace document
