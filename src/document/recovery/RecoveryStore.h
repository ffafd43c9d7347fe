#pragma once

#include <QCoreApplication>

#include "document/recovery/RecoveryPlace.h"
#include "foundation/Result.h"
#include "store/EntityFactories.h"
#include "store/ObjectContext.h"

namespace document {

/// Recovery data that a process left behind.
struct RecoveryEntry {
  DocumentName document;
  QString dataFolder;
  QString entryFolder;      ///< in the state folder; may be empty
  QDateTime lastChange;     ///< when the journal last grew; when it was begun if that is not known
  qint64 changes = 0;       ///< steps since the document was last saved
  bool isAvailable = true;  ///< false when the data lie on a disk that is not here now
};

/// What recovering gave.
struct RecoveredDocument {
  DocumentName document;
  qint64 changes = 0;
  QStringList warnings;   ///< what is missing, in sentences; empty when everything is there
  QByteArray heldBeside;  ///< see RecoveryJournal::Host
  std::unique_ptr<RecoveryPlace> place;  ///< for the RecoveryJournal that goes on
};

/// How the document reads its store; warnings are its own affair.
using StoreReading = std::function<foundation::Result<void>(
    const QByteArray& bytes, const QString& path, store::ObjectContext& context)>;

/// Finds what processes that are gone left behind, and gives it back.
class RecoveryStore {
  Q_DECLARE_TR_FUNCTIONS(RecoveryStore)

 public:
  explicit RecoveryStore(QString stateFolder = defaultStateFolder())
      : m_stateFolder(std::move(stateFolder)) {}
  /// $XDG_STATE_HOME/tessary/recovery, below ~/.local/state when that is not set.
  [[nodiscard]] static QString defaultStateFolder();
  [[nodiscard]] const QString& stateFolder() const { return m_stateFolder; }

  /// What can be recovered, the latest first. Leaves out what living processes have open. What
  /// holds no change, and names of data that were removed elsewhere, are cleared away.
  [[nodiscard]] QList<RecoveryEntry> recoverable() const;
  /// The same for one document, data included that lie beside it and came from another machine.
  [[nodiscard]] QList<RecoveryEntry> recoverableFor(const QString& documentPath) const;

  /// Fills the empty context: the store that the journal starts from, and the changes since. The
  /// context counts as changed. The data stay where they are until the journal that goes on in
  /// their place, or discard(), removes them. Fails when a process has them or nothing can be
  /// reconstructed; the context may then hold a part.
  [[nodiscard]] foundation::Result<RecoveredDocument> recover(
      const RecoveryEntry& entry, const StoreReading& readStore,
      const store::EntityFactories& factories, store::ObjectContext& context) const;

  /// Removes the data for good. Fails when a process has them.
  [[nodiscard]] foundation::Result<void> discard(const RecoveryEntry& entry) const;

 private:
  QString m_stateFolder;
};

}  // namespace document
