#pragma once

#include <QString>
#include <QStringList>

#include "foundation/Result.h"

namespace document {

/// Where things lie in the package of a document: a folder that its user sees as one file.
class PackageLayout {
 public:
  /// The package's folder, without a slash at its end.
  explicit PackageLayout(QString folder);
  /// The package that the path is in: the folder itself, or the one around a file in it. Fails for
  /// a path that does not exist and for what lies in no package.
  [[nodiscard]] static foundation::Result<PackageLayout> around(const QString& path);
  /// By the name alone.
  [[nodiscard]] static bool isPackageName(const QString& path);
  /// Where the path leads when links are followed; it need not exist.
  [[nodiscard]] static QString resolved(const QString& path);
  /// Whether both lead to one package, which need not exist. No path leads nowhere.
  [[nodiscard]] static bool isSamePlace(const QString& path, const QString& other);
  [[nodiscard]] static QString extension() { return QStringLiteral("composition"); }

  [[nodiscard]] const QString& folder() const { return m_folder; }
  /// The objects of the document; all that is read back.
  [[nodiscard]] QString store() const { return path("data.xml"); }
  /// What playout systems play.
  [[nodiscard]] QString composition() const { return path("Composition.qtz"); }
  /// What systems that list documents read.
  [[nodiscard]] QString info() const { return path("CompositionInfo.xml"); }
  /// Named sets of values for its published inputs.
  [[nodiscard]] QString values() const { return path("Values.json"); }
  [[nodiscard]] QString quickLook() const { return path("QuickLook"); }
  [[nodiscard]] QString thumbnail() const { return path("QuickLook/Thumbnail.jpg"); }

  /// Whether a folder of the path may be replaced by a document: a package, or an empty folder.
  [[nodiscard]] static bool isReplaceable(const QString& folder);
  /// Files and folders in the package beside what every save writes, by their names, hidden ones
  /// too: sets of values, and what was put there.
  [[nodiscard]] QStringList otherEntries() const;

 private:
  [[nodiscard]] QString path(const char* entry) const;

  QString m_folder;
};

}  // namespace document
