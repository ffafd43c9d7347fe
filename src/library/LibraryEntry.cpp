#include "library/LibraryEntry.h"

#include <sys/xattr.h>

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include "document/PackageLayout.h"
#include "foundation/PropertyList.h"

namespace library {

using document::PackageLayout;

namespace {

constexpr qint64 largestInfo = 4 * 1024 * 1024;

LibraryKind kindOf(const QString& fileName) {
  const QString suffix = QFileInfo(fileName).suffix().toLower();
  if (suffix == QLatin1String("qtz")) return LibraryKind::Component;
  if (suffix == PackageLayout::extension()) return LibraryKind::Composition;
  if (suffix == QLatin1String("png") || suffix == QLatin1String("jpg")) return LibraryKind::Image;
  return LibraryKind::Folder;
}

QSize sizeOfDocument(const QString& path) {
  const QString info = PackageLayout(path).info();
  if (QFileInfo(info).size() > largestInfo) return {};
  const auto list = foundation::PropertyList::fromFile(info);
  if (!list) return {};
  const foundation::PropertyDictionary& dictionary = list->dictionary();
  return {static_cast<int>(dictionary[u"width"].toInteger()),
          static_cast<int>(dictionary[u"height"].toInteger())};
}

qint64 bytesIn(const QString& folder) {
  qint64 bytes = 0;
  for (QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                          QDirIterator::Subdirectories);
       files.hasNext();) {
    files.next();
    bytes += files.fileInfo().size();
  }
  return bytes;
}

/// As file managers keep them.
QStringList tagsOf(const QString& path) {
  char text[1024];
  const ssize_t size =
      ::getxattr(QFile::encodeName(path).constData(), "user.xdg.tags", text, sizeof text);
  if (size <= 0) return {};
  return QString::fromUtf8(text, size).split(u',', Qt::SkipEmptyParts);
}

}  // namespace

bool LibraryEntry::isListed(const QString& fileName) {
  return kindOf(fileName) != LibraryKind::Folder;
}

LibraryEntry LibraryEntry::of(const QString& path) {
  const QFileInfo info(path);
  LibraryEntry entry;
  entry.path = info.absoluteFilePath();
  entry.kind = kindOf(info.fileName());
  // A folder of the name of a picture is a folder; only documents are both.
  if (info.isDir() != (entry.kind == LibraryKind::Composition)) entry.kind = LibraryKind::Folder;
  const bool isDocument = entry.kind == LibraryKind::Composition;
  entry.name = entry.kind == LibraryKind::Folder ? info.fileName() : info.completeBaseName();
  const QFileInfo dated(isDocument ? PackageLayout(path).store() : path);
  entry.dateModified = dated.lastModified();
  entry.lastOpened = dated.lastRead();
  entry.dateCreated = info.birthTime();
  entry.dateAdded = info.metadataChangeTime();
  entry.tags = tagsOf(path);
  if (entry.kind == LibraryKind::Folder) return entry;
  entry.sizeOfFile = isDocument ? bytesIn(path) : info.size();
  if (isDocument) entry.resolution = sizeOfDocument(path);
  if (entry.kind == LibraryKind::Image) entry.resolution = QImageReader(path).size();
  return entry;
}

QString LibraryEntry::kindText() const {
  const auto tr = [](const char* text) {
    return QCoreApplication::translate("library::LibraryEntry", text);
  };
  switch (kind) {
    case LibraryKind::Component:
      return tr("Component");
    case LibraryKind::Image:
      return tr("Image");
    case LibraryKind::Composition:
      return tr("Composition");
    case LibraryKind::Folder:
      break;
  }
  return tr("Folder");
}

}  // namespace library
