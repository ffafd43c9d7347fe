#pragma once

#include <QCoreApplication>

#include "document/recovery/JournalReplay.h"
#include "document/recovery/RecoveryPlace.h"

namespace document {

/// A journal read from its folder, and what of it is still to be done: the store to start from and
/// the changes since.
class RecoveryBase {
  Q_DECLARE_TR_FUNCTIONS(RecoveryBase)

 public:
  enum class Depth {
    Count,  ///< the changes are counted, not kept
    Replay
  };
  /// The folder's journal; `document` is used where the journal does not say.
  RecoveryBase(const QString& folder, const DocumentName& document, Depth depth);

  [[nodiscard]] const DocumentName& document() const { return m_document; }
  [[nodiscard]] qint64 changes() const { return m_changes; }
  /// Whether the saved document lacks something, or may do.
  [[nodiscard]] bool isWorthRecovering() const { return m_changes > 0 || !m_warnings.isEmpty(); }
  /// The store to start from; empty for none.
  [[nodiscard]] const QByteArray& storeBytes() const { return m_storeBytes; }
  [[nodiscard]] const QString& storePath() const { return m_storePath; }
  [[nodiscard]] const JournalReplay& replay() const { return m_replay; }
  /// What is not as it should be, in sentences.
  [[nodiscard]] const QStringList& warnings() const { return m_warnings; }
  /// False when the store is not the one that the changes were made to.
  [[nodiscard]] bool isExact() const { return m_isExact; }

 private:
  void readFrames(JournalReader& reader, Depth depth);
  void findStore(const JournalHeader& header);
  [[nodiscard]] bool startAt(const QString& path, const QByteArray& identity);
  /// With the package beside the document's old place that has this store: it was renamed.
  [[nodiscard]] bool startWhereItWasRenamedTo(const QByteArray& identity);
  void startWithoutHeader();
  void startWithPresentDocument();

  QString m_folder;
  DocumentName m_document;
  bool m_isExact = true;
  qint64 m_changes = 0;
  QByteArray m_storeBytes;
  QString m_storePath;
  JournalReplay m_replay;
  QStringList m_warnings;
};

}  // namespace document
