#include "document/CompositionDocumentsController.h"

#include "foundation/Log.h"

namespace document {

using foundation::logDebug;
using foundation::Result;
using model::VideoResolution;

CompositionDocumentsController::CompositionDocumentsController(
    foundation::UserDefaults& defaults, model::StandardComponents standardComponents,
    RecoveryStore recoveryStore)
    : m_defaults(defaults),
      m_standardComponents(std::move(standardComponents)),
      m_recoveryStore(std::move(recoveryStore)) {}

CompositionDocumentsController::~CompositionDocumentsController() = default;

QList<CompositionDocument*> CompositionDocumentsController::documents() const {
  QList<CompositionDocument*> list;
  for (const Open& open : m_documents) list.append(open.document.get());
  return list;
}

CompositionDocumentsController::Open CompositionDocumentsController::make() const {
  Open open;
  open.document = std::make_unique<CompositionDocument>(m_standardComponents);
  open.session = std::make_unique<DocumentSession>(*open.document, m_recoveryStore, m_hooks.warn);
  return open;
}

CompositionDocument& CompositionDocumentsController::add(Open open) {
  m_documents.push_back(std::move(open));
  CompositionDocument& document = *m_documents.back().document;
  show(document);
  return document;
}

void CompositionDocumentsController::show(CompositionDocument& document) const {
  if (m_hooks.showWindows) m_hooks.showWindows(document);
}

CompositionDocument& CompositionDocumentsController::newDocument(const QString& title) {
  setNewDocumentResolution(title.isEmpty()
                               ? VideoResolution::defaultVideoResolution(m_defaults)
                               : VideoResolution::videoResolutionForBroadcastMode(title));
  logDebug(QStringLiteral("CompositionDocumentsController will create a new document"));
  return openUntitledDocumentAndDisplay();
}

int CompositionDocumentsController::freeUntitledNumber() const {
  QSet<int> taken;
  for (const Open& open : m_documents)
    if (open.document->fileURL().isEmpty()) taken.insert(open.document->untitledNumber());
  int number = 1;
  while (taken.contains(number)) ++number;
  return number;
}

CompositionDocument& CompositionDocumentsController::openUntitledDocumentAndDisplay() {
  logDebug(QStringLiteral("CompositionDocumentsController will open an untitled document"));
  const VideoResolution resolution = m_newDocumentResolution
                                         ? *m_newDocumentResolution
                                         : VideoResolution::defaultVideoResolution(m_defaults);
  m_newDocumentResolution.reset();
  Open open = make();
  open.document->setUntitledNumber(freeUntitledNumber());
  if (!resolution.title().isEmpty()) open.document->emptyDocumentWithResolution(resolution);
  return add(std::move(open));
}

tl::expected<CompositionDocument*, CompositionDocumentsController::OpenFailure>
CompositionDocumentsController::openDocument(const QString& path, WhenTaken whenTaken) {
  const auto failed = [](const foundation::Error& error, bool isTaken = false) {
    return tl::unexpected(OpenFailure{error, isTaken});
  };
  const auto package = PackageLayout::around(path);
  if (!package) return failed(package.error());
  for (const Open& open : m_documents)
    if (PackageLayout::isSamePlace(open.document->fileURL().toLocalFile(), package->folder())) {
      show(*open.document);
      return open.document.get();
    }
  Open open = make();
  const DocumentLock::Attempt attempt = open.session->lock(
      package->folder(), whenTaken == WhenTaken::TakeOver ? DocumentLock::Others::Displace
                                                          : DocumentLock::Others::Respect);
  if (attempt.state == DocumentLock::State::Taken && whenTaken == WhenTaken::Refuse)
    return failed({attempt.sentence, package->folder(), {}}, true);
  if (auto read = open.document->readFromURL(QUrl::fromLocalFile(package->folder())); !read)
    return failed(read.error());
  return &add(std::move(open));
}

Result<CompositionDocument*> CompositionDocumentsController::recoverDocument(
    const RecoveryEntry& entry, QStringList& warnings) {
  Open open = make();
  if (!entry.document.path.isEmpty()) {
    const DocumentLock::Attempt attempt = open.session->lock(entry.document.path);
    if (attempt.state == DocumentLock::State::Taken)
      return foundation::failure(attempt.sentence, entry.document.path);
  }
  const auto recovered = open.session->recover(entry);
  if (!recovered) return tl::unexpected(recovered.error());
  warnings += *recovered;
  return &add(std::move(open));
}

void CompositionDocumentsController::closeDocument(CompositionDocument& document) {
  document.prepareToClose();
  if (m_hooks.willClose) m_hooks.willClose(document);
  const auto closed = std::find_if(m_documents.begin(), m_documents.end(), [&](const Open& open) {
    return open.document.get() == &document;
  });
  if (closed == m_documents.end()) return;
  const Open closing = std::move(*closed);
  m_documents.erase(closed);
  closing.session->close();
}

void CompositionDocumentsController::autosave() {
  for (const Open& open : m_documents)
    if (const auto saved = open.session->autosave(); !saved)
      foundation::logError(saved.error().text());
}

QList<CompositionDocument*> CompositionDocumentsController::unsavedDocuments() const {
  QList<CompositionDocument*> unsaved;
  for (const Open& open : m_documents)
    if (open.document->isDocumentEdited()) unsaved.append(open.document.get());
  return unsaved;
}

void CompositionDocumentsController::runSlideshow() const {
  if (!m_documents.empty() && m_hooks.runSlideshow) m_hooks.runSlideshow(documents());
}

}  // namespace document
