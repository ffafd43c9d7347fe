#include "document/DocumentSession.h"

#include "document/PersistentPackageDocument.h"

namespace document {

using foundation::Result;

DocumentSession::DocumentSession(PersistentPackageDocument& document, RecoveryStore store,
                                 Warn warn)
    : m_document(document), m_store(std::move(store)), m_warn(std::move(warn)) {
  m_document.setStoreObserver(this);
}

DocumentSession::~DocumentSession() {
  m_document.setStoreObserver(nullptr);
}

DocumentName DocumentSession::name() const {
  return {PackageLayout(m_document.fileURL().toLocalFile()).folder(), m_document.displayName()};
}

RecoveryJournal::Host DocumentSession::host() {
  return {[this] { return m_document.storeBytes(); },
          [this](const foundation::Error& error) {
            if (m_warn)
              m_warn(QStringLiteral("Changes of \"%1\" are not kept against a crash until it is "
                                    "saved: %2")
                         .arg(m_document.displayName(), error.text()));
          },
          [this] { return m_document.heldBesideStore(); }};
}

DocumentLock::Attempt DocumentSession::lock(const QString& path, DocumentLock::Others others) {
  DocumentLock::Attempt attempt = DocumentLock::take(path, others);
  if (attempt.lock) m_lock = std::move(attempt.lock);
  return attempt;
}

void DocumentSession::contextWillBeReplaced() {
  if (m_journal) m_journal->close();
  m_journal.reset();
}

void DocumentSession::contextWasReplaced(const QByteArray& storeBytes) {
  m_journal =
      std::make_unique<RecoveryJournal>(m_document.context(), m_store, name(), storeBytes, host());
}

Result<QStringList> DocumentSession::recover(const RecoveryEntry& entry) {
  auto recovered = m_document.recover(m_store, entry);
  if (!recovered) return tl::unexpected(recovered.error());
  takeLockAlong();
  const QStringList warnings = recovered->warnings;
  m_journal = std::make_unique<RecoveryJournal>(m_document.context(), m_store,
                                                std::move(*recovered), host());
  return warnings;
}

Result<void> DocumentSession::autosave() {
  return m_journal ? m_journal->checkpoint() : Result<void>();
}

void DocumentSession::close() {
  if (m_journal) m_journal->close();
  m_journal.reset();
  m_lock.reset();
}

Result<void> DocumentSession::mayBeSavedTo(const QString& path, SaveOperation operation) {
  m_targetLock.reset();
  const bool isSamePlace = PackageLayout::isSamePlace(name().path, path);
  if (isSamePlace && m_lock) {
    if (m_lock->isStillHeld()) return {};
    return foundation::failure(
        QStringLiteral("somebody else has taken the document over; save it under another name"),
        path);
  }
  DocumentLock::Attempt attempt = DocumentLock::take(path);
  if (attempt.state == DocumentLock::State::Taken)
    return foundation::failure(attempt.sentence, path);
  if (operation != SaveOperation::SaveTo) m_targetLock = std::move(attempt.lock);
  return {};
}

void DocumentSession::willBeSaved(const QByteArray& storeBytes, const QString& path) {
  if (m_journal) m_journal->beginSave(storeBytes, path);
}

void DocumentSession::wasSaved() {
  if (m_targetLock) m_lock = std::move(m_targetLock);
  if (m_journal) m_journal->endSave(name());
}

void DocumentSession::heldBesideChanged() {
  if (m_journal) m_journal->keepBeside();
}

void DocumentSession::takeLockAlong() {
  // Without it, every save asks whether somebody else has the document.
  if (m_lock && m_lock->moveTo(name().path).state != DocumentLock::State::Held) m_lock.reset();
}

void DocumentSession::wasMoved() {
  takeLockAlong();
  if (!m_journal) return;
  if (const auto moved = m_journal->documentMoved(name()); !moved && m_warn)
    m_warn(moved.error().text());
}

}  // namespace document
