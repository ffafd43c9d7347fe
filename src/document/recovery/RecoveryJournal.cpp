#include "document/recovery/RecoveryJournal.h"

#include <QFile>
#include <algorithm>
#include <limits>
#include <utility>

#include "foundation/DurableFile.h"

namespace document {

using foundation::Error;
using foundation::failure;
using foundation::Result;
using Base = JournalHeader::Base;

namespace {

/// A disk that stays full must not make every change slow: at most a tenth of the time goes into
/// trying again.
constexpr int patience = 10;

}  // namespace

RecoveryJournal::RecoveryJournal(store::ObjectContext& context, RecoveryStore store,
                                 DocumentName document, const QByteArray& storeBytes, Host host)
    : m_context(context),
      m_store(std::move(store)),
      m_document(std::move(document)),
      m_baseIdentity(storeBytes.isEmpty() ? QByteArray() : identityOf(storeBytes)),
      m_host(std::move(host)) {
  takeBase();
  observe();
}

RecoveryJournal::RecoveryJournal(store::ObjectContext& context, RecoveryStore store,
                                 RecoveredDocument recovered, Host host)
    : m_context(context),
      m_store(std::move(store)),
      m_document(std::move(recovered.document)),
      m_host(std::move(host)),
      m_place(std::move(recovered.place)),
      m_changes(recovered.changes) {
  m_shadow.take(m_context);
  const Clock::time_point start = Clock::now();
  if (const Result<void> written = writeCheckpoint(); !written) failed(written.error(), start);
  observe();
}

RecoveryJournal::~RecoveryJournal() = default;

void RecoveryJournal::observe() {
  m_observation =
      m_context.observeChanges([this](const store::ChangeSet& changes) { changed(changes); });
}

void RecoveryJournal::takeBase() {
  m_touched.clear();
  if (!m_baseIdentity.isEmpty()) return m_shadow.take(m_context);
  m_shadow.clear();
  for (const auto& [id, object] : m_context.objects()) m_touched.push_back(id);
}

void RecoveryJournal::changed(const store::ChangeSet& changes) {
  for (const store::ObjectSet* set : {&changes.inserted, &changes.updated, &changes.deleted})
    for (const store::ManagedObject* object : set->objects())
      m_touched.push_back(object->objectId());
  writeStep();
}

void RecoveryJournal::writeStep() {
  // A step that was taken back leaves nothing to recover.
  if (!m_file && !m_failed && !m_context.hasChanges()) return;
  const Clock::time_point start = Clock::now();
  if (m_failed) {
    m_touched.clear();
    ++m_changes;
    if (start < m_retryAt) return;
    if (const Result<void> written = writeCheckpoint(); !written) failed(written.error(), start);
    return;
  }
  const QByteArray payload = m_shadow.stepTo(m_context, std::exchange(m_touched, {}));
  if (payload.isEmpty()) return;
  ++m_changes;
  if (const Result<void> appended = append(payload); !appended) {
    // The folder may have vanished, or its disk: then the data begin anew elsewhere.
    if (!writeCheckpoint()) failed(appended.error(), start);
    return;
  }
  ++m_changesInFile;
  if (m_file->size() < m_compactAt) return;
  // When there is no room for the store the journal still grows, and this is tried again later.
  if (!writeCheckpoint()) m_compactAt = m_file->size() + m_sizeLimit;
}

Result<void> RecoveryJournal::append(const QByteArray& payload) {
  if (payload.size() > std::numeric_limits<qint32>::max())
    return failure(QStringLiteral("the change is too large"),
                   m_place ? m_place->folder() : QString());
  if (!m_file)
    if (const Result<void> begun = begin(); !begun) return begun;
  return m_file->append(journalFrame(++m_frame, payload));
}

Result<void> RecoveryJournal::begin() {
  auto place = RecoveryPlace::make(m_store.stateFolder(), m_document);
  if (!place) return tl::unexpected(place.error());
  JournalHeader header;
  header.base = m_baseIdentity.isEmpty() ? Base::Nothing : Base::Document;
  header.baseIdentity = m_baseIdentity;
  header.documentPath = m_document.path;
  header.displayName = m_document.displayName;
  auto file = JournalFile::create((*place)->journalPath(), journalBegin(header));
  if (!file) {
    (*place)->remove();
    return tl::unexpected(file.error());
  }
  m_place = std::move(*place);
  m_file = std::move(*file);
  m_frame = 0;
  m_compactAt = m_sizeLimit;
  keepBeside();
  return {};
}

Result<void> RecoveryJournal::checkpoint() {
  if (!m_context.hasChanges()) {
    forgetData();
    return {};
  }
  if (m_file && !m_failed && m_changesInFile == 0) return {};
  const Clock::time_point start = Clock::now();
  Result<void> written = writeCheckpoint();
  if (!written && (m_failed || !m_file)) failed(written.error(), start);
  return written;
}

Result<void> RecoveryJournal::writeCheckpoint() {
  // The folder may have been removed under this process; then the data get a new one.
  if (m_place && !m_place->isInPlace()) {
    m_place->removeEntry();
    m_place.reset();
  }
  if (!m_place) {
    auto place = RecoveryPlace::make(m_store.stateFolder(), m_document);
    if (!place) return tl::unexpected(place.error());
    m_place = std::move(*place);
  }
  const QByteArray bytes = m_host.writeStore();
  if (bytes.isEmpty()) return failure(QStringLiteral("the document cannot be written"));
  const int number = m_place->lastCheckpoint() + 1;
  const QString path = m_place->checkpointPath(number);
  // Until the new journal is in place the old one counts, and names what it starts from.
  if (const Result<void> stored = foundation::replaceFile(path, bytes); !stored) return stored;
  const JournalHeader header{Base::Checkpoint, identityOf(bytes), number,
                             m_changes,        m_document.path,   m_document.displayName};
  auto file = JournalFile::create(m_place->journalPath(), journalBegin(header));
  if (!file) return tl::unexpected(file.error());
  m_file = std::move(*file);
  m_place->removeOtherCheckpoints(number);
  m_frame = 0;
  m_changesInFile = 0;
  m_compactAt = std::max<qint64>(m_sizeLimit, bytes.size());
  if (m_failed || !m_touched.empty()) m_shadow.take(m_context);
  m_touched.clear();
  m_failed = false;
  keepBeside();
  return {};
}

void RecoveryJournal::keepBeside() {
  if (!m_place || !m_host.heldBeside) return;
  const QString path = m_place->besidePath();
  const QByteArray held = m_host.heldBeside();
  if (held.isEmpty()) {
    QFile::remove(path);
    return;
  }
  const Result<void> kept = foundation::replaceFile(path, held);
  if (!kept && m_host.cannotWrite) m_host.cannotWrite(kept.error());
}

void RecoveryJournal::failed(const Error& error, Clock::time_point since) {
  const Clock::time_point now = Clock::now();
  m_retryAt = now + patience * (now - since);
  if (!std::exchange(m_failed, true) && m_host.cannotWrite) m_host.cannotWrite(error);
}

Result<void> RecoveryJournal::sync() {
  return m_file ? m_file->sync() : Result<void>();
}

void RecoveryJournal::beginSave(const QByteArray& storeBytes, const QString& documentPath) {
  m_savedIdentity = identityOf(storeBytes);
  if (!m_file || m_failed) return;
  const Clock::time_point start = Clock::now();
  Result<void> marked = append(savePayload({m_savedIdentity, documentPath}));
  if (marked) marked = m_file->sync();
  if (!marked) failed(marked.error(), start);
}

void RecoveryJournal::endSave(const DocumentName& document) {
  m_document = document;
  m_baseIdentity = std::exchange(m_savedIdentity, {});
  forgetData();
}

Result<void> RecoveryJournal::documentMoved(const DocumentName& document) {
  m_document = document;
  if (!m_place) return {};
  std::unique_ptr<RecoveryPlace> before = std::move(m_place);
  const Result<void> written = writeCheckpoint();
  if (written) {
    before->remove();
    return {};
  }
  if (m_place) m_place->remove();
  m_place = std::move(before);  // where the journal goes on, under the old name
  return written;
}

void RecoveryJournal::close() {
  m_observation.cancel();
  forgetData();
}

void RecoveryJournal::forgetData() {
  m_file.reset();
  if (m_place) m_place->remove();
  m_place.reset();
  m_changes = 0;
  m_changesInFile = 0;
  m_failed = false;
  takeBase();
}

}  // namespace document
