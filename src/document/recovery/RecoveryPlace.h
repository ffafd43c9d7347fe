#pragma once

#include "foundation/FileLock.h"

namespace document {

/// A document as its recovery data names it.
struct DocumentName {
  QString path;  ///< the package; empty before it was first saved
  QString displayName;
};

/// The store in a document's package.
[[nodiscard]] QString storePathOf(const QString& documentPath);

/// The folder with the recovery data of one open document: beside the document, or in the state
/// folder when the document has no place yet or its folder cannot be written. A small file in the
/// state folder says where the data lies. The place is locked as long as this object lives; its
/// data stay until remove().
class RecoveryPlace {
 public:
  /// A new empty place. Data that an earlier process left beside the document are not touched.
  [[nodiscard]] static foundation::Result<std::unique_ptr<RecoveryPlace>> make(
      const QString& stateFolder, const DocumentName& document);
  /// The place of a process that is gone. Fails when somebody has it. `entryFolder` may be empty.
  [[nodiscard]] static foundation::Result<std::unique_ptr<RecoveryPlace>> takeOver(
      const QString& folder, const QString& entryFolder);

  [[nodiscard]] const QString& folder() const { return m_folder; }
  [[nodiscard]] QString journalPath() const { return journalPathIn(m_folder); }
  [[nodiscard]] QString checkpointPath(int number) const;
  /// Of what was held to be written beside the store.
  [[nodiscard]] QString besidePath() const;
  [[nodiscard]] int lastCheckpoint() const;  ///< 0 when there is none
  /// Removes the checkpoints but that one.
  void removeOtherCheckpoints(int number) const;
  /// False after somebody removed the folder.
  [[nodiscard]] bool isInPlace() const { return m_lock->isStillHeld(); }
  /// Removes what the state folder says about the place.
  void removeEntry();
  /// Removes the data, the folder and what the state folder says about it.
  void remove();

  [[nodiscard]] static QString folderBeside(const QString& documentPath);
  [[nodiscard]] static QString journalPathIn(const QString& folder);
  /// Numbers of the checkpoints in the folder, ascending.
  [[nodiscard]] static QList<int> checkpointsIn(const QString& folder);
  [[nodiscard]] static QString checkpointPathIn(const QString& folder, int number);
  /// Whether a living process has the folder.
  [[nodiscard]] static bool isTaken(const QString& folder);

 private:
  RecoveryPlace(QString folder, QString entryFolder, std::unique_ptr<foundation::FileLock> lock)
      : m_folder(std::move(folder)),
        m_entryFolder(std::move(entryFolder)),
        m_lock(std::move(lock)) {}
  [[nodiscard]] static foundation::Result<std::unique_ptr<RecoveryPlace>> makeIn(
      const QString& folder, const QString& entryFolder);

  QString m_folder;
  QString m_entryFolder;
  std::unique_ptr<foundation::FileLock> m_lock;
};

/// What the state folder says about a place.
struct RecoveryEntryFile {
  DocumentName document;
  QString dataFolder;
  QDateTime since;

  [[nodiscard]] foundation::Result<void> writeTo(const QString& entryFolder) const;
  [[nodiscard]] static std::optional<RecoveryEntryFile> readFrom(const QString& entryFolder);
};

}  // namespace document
