#pragma once

#include <functional>
#include <memory>

#include "document/DocumentLock.h"
#include "document/StoreObserver.h"
#include "document/recovery/RecoveryJournal.h"

namespace document {

class PersistentPackageDocument;

/// What keeps a document safe while it is open for editing: the lock that tells others, and the
/// journal from which its changes are recovered when this process ends without saving them. Follows
/// the document through saving, moving and reverting.
class DocumentSession : public StoreObserver {
 public:
  using Warn = std::function<void(const QString& sentence)>;

  /// To be made before the document is read or made empty, and to be gone before it. The callback,
  /// which may be empty, is told when changes cannot be kept any more.
  DocumentSession(PersistentPackageDocument& document, RecoveryStore store, Warn warn = {});
  ~DocumentSession() override;

  /// Takes the lock of the package at the path. Where it is held by someone else nothing changes.
  [[nodiscard]] DocumentLock::Attempt lock(
      const QString& path, DocumentLock::Others others = DocumentLock::Others::Respect);
  [[nodiscard]] bool isLocked() const { return m_lock != nullptr; }

  /// Gives the document what a process left behind; it has unsaved changes then. Returned are
  /// sentences about what is missing. The lock must be held already, if there is a package.
  [[nodiscard]] foundation::Result<QStringList> recover(const RecoveryEntry& entry);

  /// Writes the whole store beside the document; for a timer.
  [[nodiscard]] foundation::Result<void> autosave();
  /// The document is closed on purpose: its changes are saved, or not wanted.
  void close();
  /// Steps that are kept now.
  [[nodiscard]] qint64 keptChanges() const { return m_journal ? m_journal->changes() : 0; }

  void contextWillBeReplaced() override;
  void contextWasReplaced(const QByteArray& storeBytes) override;
  [[nodiscard]] foundation::Result<void> mayBeSavedTo(const QString& path,
                                                      SaveOperation operation) override;
  void willBeSaved(const QByteArray& storeBytes, const QString& path) override;
  void wasSaved() override;
  void heldBesideChanged() override;
  void wasMoved() override;

 private:
  [[nodiscard]] DocumentName name() const;
  [[nodiscard]] RecoveryJournal::Host host();
  /// To where the document is now.
  void takeLockAlong();

  PersistentPackageDocument& m_document;
  RecoveryStore m_store;
  Warn m_warn;
  std::unique_ptr<DocumentLock> m_lock;
  std::unique_ptr<DocumentLock> m_targetLock;  ///< of where the document is being saved to
  std::unique_ptr<RecoveryJournal> m_journal;
};

}  // namespace document
