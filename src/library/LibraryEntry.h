#pragma once

#include <QDateTime>
#include <QSize>
#include <QString>
#include <QStringList>

namespace library {

/// What a file can be in a graphic.
enum class LibraryKind { Folder, Component, Image, Composition };

/// One file, folder or document that the library lists.
struct LibraryEntry {
  QString path;  ///< absolute
  QString name;  ///< without extension
  LibraryKind kind = LibraryKind::Folder;
  qint64 sizeOfFile = 0;  ///< bytes; of a document, all its files together
  QSize resolution;       ///< pixels; empty where the file does not say
  QDateTime dateModified;
  QDateTime dateCreated;  ///< invalid where the file system does not keep it
  QDateTime dateAdded;    ///< when its entry last changed: it was put here, or renamed
  QDateTime lastOpened;
  QStringList tags;

  /// Reads all but the resolution of a component, which only its thumbnail's maker knows. Kind
  /// Folder for what the library does not list.
  [[nodiscard]] static LibraryEntry of(const QString& path);
  /// Whether the library lists a file of the name.
  [[nodiscard]] static bool isListed(const QString& fileName);
  [[nodiscard]] QString kindText() const;
};

}  // namespace library
