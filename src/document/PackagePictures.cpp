#include "document/PackagePictures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "foundation/DurableFile.h"

namespace document {

using foundation::Result;

namespace {

constexpr qint64 blockSize = qint64{1} << 16;

bool haveSameBytes(const QString& path, const QString& other) {
  QFile a(path);
  QFile b(other);
  if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly) || a.size() != b.size())
    return false;
  while (!a.atEnd())
    if (const QByteArray block = a.read(blockSize); block.isEmpty() || block != b.read(blockSize))
      return false;
  return true;
}

/// Whether saving writes there, now or later.
bool isOfTheDocument(const QString& path, const PackageLayout& package) {
  for (const QString& own : {package.store(), package.composition(), package.info(),
                             package.quickLook(), package.values()})
    if (path.compare(own, Qt::CaseInsensitive) == 0) return true;
  return false;
}

/// Its name in the package.
Result<QString> copied(const QFileInfo& source, const PackageLayout& package) {
  const QString ending = source.suffix().isEmpty() ? QString() : u'.' + source.suffix();
  for (int number = 1;; ++number) {
    const QString name =
        number == 1
            ? source.fileName()
            : QStringLiteral("%1 %2%3").arg(source.completeBaseName()).arg(number).arg(ending);
    const QString path = QDir(package.folder()).filePath(name);
    if (isOfTheDocument(path, package)) continue;
    const QFileInfo there(path);
    if (there.exists() || there.isSymLink()) {
      if (there.isFile() && !there.isSymLink() && haveSameBytes(path, source.filePath()))
        return name;
      continue;
    }
    return foundation::copyFileDurably(source.filePath(), path).map([&] { return name; });
  }
}

Result<QString> nameInside(const QString& given, const PackageLayout& package) {
  const QFileInfo source(QDir::cleanPath(QDir(package.folder()).absoluteFilePath(given)));
  if (!source.isFile()) return given;
  const QString folder = PackageLayout::resolved(package.folder());
  const QString path = source.canonicalFilePath();
  if (path.startsWith(folder + u'/')) return QDir(folder).relativeFilePath(path);
  return copied(source, package);
}

}  // namespace

PackagePictures::Kept PackagePictures::kept(const playout::ValueSets& sets, const QStringList& keys,
                                            const PackageLayout& package) {
  Kept kept{sets};
  for (const playout::ValueSet& set : sets.list()) {
    playout::ValueSet inside = set;
    for (const QString& key : keys) {
      const QString given = set.values.value(key).toString();
      if (given.isEmpty()) continue;
      if (const auto name = nameInside(given, package))
        inside.values[key] = *name;
      else if (kept.copied)
        kept.copied = tl::unexpected(name.error());
    }
    // The set is there under its name: nothing can fail.
    static_cast<void>(kept.sets.put(inside));
  }
  return kept;
}

}  // namespace document
