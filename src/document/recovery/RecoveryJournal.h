#pragma once

#include <chrono>

#include "document/recovery/JournalFile.h"
#include "document/recovery/JournalFormat.h"
#include "document/recovery/ObjectShadow.h"
#include "document/recovery/RecoveryStore.h"

namespace document {

/// Keeps the changes of a document's context on disk while it is open, so that a process that is
/// killed loses the step in progress at most. Each step is one small write; what that costs does
/// not depend on how much the document holds. Nothing is written before the first change.
///
/// When the journal has grown large, or checkpoint() is called, the whole store is written beside
/// it and the journal starts anew from there. A journal that cannot be written is told once and
/// tried again with the following changes. Unless close() was called, the data stay when this
/// object goes.
class RecoveryJournal {
 public:
  struct Host {
    std::function<QByteArray()> writeStore;  ///< the document's own, so that nothing is left out
    std::function<void(const foundation::Error&)> cannotWrite = {};
    /// What the next save writes beside the store; nothing when there is none. May be empty.
    std::function<QByteArray()> heldBeside = {};
  };
  static constexpr qint64 defaultSizeLimit = qint64{16} << 20;

  /// For a document whose store, with these bytes, the context was read from; no bytes for one that
  /// was never saved. To be made right after reading: changes before it are not in the data.
  RecoveryJournal(store::ObjectContext& context, RecoveryStore store, DocumentName document,
                  const QByteArray& storeBytes, Host host);
  /// Goes on in the place of recovered data, which are replaced by a checkpoint.
  RecoveryJournal(store::ObjectContext& context, RecoveryStore store, RecoveredDocument recovered,
                  Host host);
  ~RecoveryJournal();
  RecoveryJournal(const RecoveryJournal&) = delete;
  RecoveryJournal& operator=(const RecoveryJournal&) = delete;

  /// Writes the whole store and starts the journal anew; removes the data when the document has no
  /// unsaved changes. For the timer of the document. After a failure the journal before it counts.
  [[nodiscard]] foundation::Result<void> checkpoint();
  /// What is held beside the store has changed. It is kept with the data, from the first change of
  /// the store on.
  void keepBeside();
  /// Waits until the disk has everything.
  [[nodiscard]] foundation::Result<void> sync();

  /// To be called before these bytes become the store of the document with that path, and after
  /// that: the data are removed then, and the next change begins new ones. A save that failed needs
  /// no other call.
  void beginSave(const QByteArray& storeBytes, const QString& documentPath);
  void endSave(const DocumentName& document);
  /// The document lies elsewhere now; its data follow.
  [[nodiscard]] foundation::Result<void> documentMoved(const DocumentName& document);
  /// Removes the data, when the document is closed.
  void close();

  [[nodiscard]] bool isWorking() const { return !m_failed; }
  /// Steps since the document was last saved.
  [[nodiscard]] qint64 changes() const { return m_changes; }
  [[nodiscard]] const DocumentName& document() const { return m_document; }
  /// Where the data lie; empty as long as there are none.
  [[nodiscard]] QString folder() const { return m_place ? m_place->folder() : QString(); }
  [[nodiscard]] qint64 size() const { return m_file ? m_file->size() : 0; }
  void setSizeLimit(qint64 bytes) { m_sizeLimit = bytes; }

 private:
  using Clock = std::chrono::steady_clock;

  void observe();
  void changed(const store::ChangeSet& changes);
  void writeStep();
  [[nodiscard]] foundation::Result<void> append(const QByteArray& payload);
  [[nodiscard]] foundation::Result<void> begin();
  [[nodiscard]] foundation::Result<void> writeCheckpoint();
  void failed(const foundation::Error& error, Clock::time_point since);
  void forgetData();
  /// What the base of the next journal knows.
  void takeBase();

  store::ObjectContext& m_context;
  RecoveryStore m_store;
  DocumentName m_document;
  QByteArray m_baseIdentity;  ///< of the document's store; empty when there is none
  Host m_host;
  qint64 m_sizeLimit = defaultSizeLimit;

  std::unique_ptr<RecoveryPlace> m_place;
  std::unique_ptr<JournalFile> m_file;
  ObjectShadow m_shadow;
  std::vector<store::ObjectId> m_touched;  ///< objects to look at
  quint32 m_frame = 0;
  qint64 m_changes = 0;
  qint64 m_changesInFile = 0;
  qint64 m_compactAt = 0;
  QByteArray m_savedIdentity;  ///< between beginSave() and endSave()
  bool m_failed = false;
  Clock::time_point m_retryAt;
  store::Subscription m_observation;
};

}  // namespace document
