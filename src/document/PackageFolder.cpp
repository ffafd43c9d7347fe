#include "document/PackageFolder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "document/PackageLayout.h"
#include "foundation/DurableFile.h"

namespace document {

using foundation::failure;
using foundation::Result;

namespace {

foundation::Error systemError(const QString& what, const QString& file) {
  return {what, file, QString::fromLocal8Bit(std::strerror(errno))};
}

enum class Exchange { No, Yes };

bool renameFolder(const QString& from, const QString& to, Exchange exchange) {
  const unsigned flags = exchange == Exchange::Yes ? RENAME_EXCHANGE : RENAME_NOREPLACE;
  const QByteArray source = QFile::encodeName(from);
  const QByteArray target = QFile::encodeName(to);
  if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), flags) == 0)
    return true;
  // File systems that know no flags: a new name is free, which was looked at just before.
  return errno == EINVAL && exchange == Exchange::No &&
         ::rename(source.constData(), target.constData()) == 0;
}

/// For file systems that cannot exchange two folders: file by file, the store last, each of them
/// replaced whole.
Result<void> moveEntries(const QString& from, const QString& to) {
  const QString store = QFileInfo(PackageLayout(to).store()).fileName();
  QStringList names = QDir(from).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  names.removeAll(store);
  names.append(store);
  for (const QString& name : names) {
    const QString target = to + u'/' + name;
    if (QFileInfo(target).isDir() && !QFileInfo(target).isSymLink())
      QDir(target).removeRecursively();
    if (std::rename(QFile::encodeName(from + u'/' + name).constData(),
                    QFile::encodeName(target).constData()) != 0)
      return tl::unexpected(systemError(QStringLiteral("cannot be replaced"), target));
  }
  return foundation::syncFolder(to);
}

Result<void> putInPlace(const QString& staged, const QString& path) {
  const bool isThere = QFileInfo::exists(path);
  if (renameFolder(staged, path, isThere ? Exchange::Yes : Exchange::No))
    return foundation::syncFolder(QFileInfo(path).absolutePath());
  const bool cannotExchange = errno == EINVAL || errno == EXDEV;  // the latter: layered ones
  if (isThere && cannotExchange && QFileInfo(path).isDir()) return moveEntries(staged, path);
  return tl::unexpected(systemError(QStringLiteral("cannot be written"), path));
}

}  // namespace

Result<void> PackageFolder::replace(const QString& path, const Filler& fill) {
  // Where a link leads the package lies; the link stays.
  const QFileInfo target(PackageLayout::resolved(path));
  if (target.exists() && (!target.isDir() || !PackageLayout::isReplaceable(path)))
    return failure(QStringLiteral("is no composition document, so it is not replaced by one"),
                   path);
  // In the same folder, since only within a file system a folder moves in one step.
  QTemporaryDir staging(target.absolutePath() + QStringLiteral("/.") + target.fileName() +
                        QStringLiteral(".XXXXXX"));
  if (!staging.isValid())
    return failure(QStringLiteral("cannot be written"), path, staging.errorString());
  if (auto filled = fill(staging.path()); !filled) return filled;
  // Temporary folders are their maker's only; documents are like other files of the user.
  const mode_t mask = ::umask(0);
  ::umask(mask);
  if (::chmod(QFile::encodeName(staging.path()).constData(), 0777 & ~mask) != 0)
    return tl::unexpected(systemError(QStringLiteral("cannot be written"), path));
  if (auto synced = foundation::syncFolder(staging.path()); !synced) return synced;
  return putInPlace(staging.path(), target.absoluteFilePath());
}

Result<void> PackageFolder::copyEntry(const QString& source, const QString& destination) {
  const QFileInfo info(source);
  if (info.isSymLink()) {
    if (QFile::link(info.symLinkTarget(), destination)) return {};
    return failure(QStringLiteral("cannot be copied"), source);
  }
  if (!info.isDir()) return foundation::copyFileDurably(source, destination);
  if (!QDir().mkpath(destination)) return failure(QStringLiteral("cannot be made"), destination);
  const QDir folder(source);
  for (const QString& name :
       folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
    if (auto copied = copyEntry(folder.filePath(name), destination + u'/' + name); !copied)
      return copied;
  return foundation::syncFolder(destination);
}

}  // namespace document
