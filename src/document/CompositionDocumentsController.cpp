#include "document/CompositionDocumentsController.h"

#include <QFileInfo>

#include "foundation/Log.h"

namespace document {

using foundation::logDebug;
using foundation::Result;
using model::VideoResolution;

CompositionDocumentsController::CompositionDocumentsController(
    foundation::UserDefaults& defaults, model::StandardComponents standardComponents)
    : m_defaults(defaults), m_standardComponents(std::move(standardComponents)) {}

CompositionDocumentsController::~CompositionDocumentsController() = default;

QList<CompositionDocument*> CompositionDocumentsController::documents() const {
  QList<CompositionDocument*> list;
  for (const auto& document : m_documents) list.append(document.get());
  return list;
}

CompositionDocument& CompositionDocumentsController::add(
    std::unique_ptr<CompositionDocument> document) {
  m_documents.push_back(std::move(document));
  return *m_documents.back();
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

CompositionDocument& CompositionDocumentsController::openUntitledDocumentAndDisplay() {
  logDebug(QStringLiteral("CompositionDocumentsController will open an untitled document"));
  const VideoResolution resolution = m_newDocumentResolution
                                         ? *m_newDocumentResolution
                                         : VideoResolution::defaultVideoResolution(m_defaults);
  m_newDocumentResolution.reset();
  CompositionDocument& document = add(std::make_unique<CompositionDocument>(m_standardComponents));
  if (!resolution.title().isEmpty()) document.emptyDocumentWithResolution(resolution);
  show(document);
  return document;
}

Result<CompositionDocument*> CompositionDocumentsController::openDocument(const QString& path) {
  const auto package = PackageLayout::around(path);
  if (!package) return tl::unexpected(package.error());
  for (const auto& document : m_documents)
    if (QFileInfo(document->fileURL().toLocalFile()) == QFileInfo(package->folder())) {
      show(*document);
      return document.get();
    }
  auto document = std::make_unique<CompositionDocument>(m_standardComponents);
  if (auto read = document->readFromURL(QUrl::fromLocalFile(package->folder())); !read)
    return tl::unexpected(read.error());
  CompositionDocument& added = add(std::move(document));
  show(added);
  return &added;
}

void CompositionDocumentsController::closeDocument(CompositionDocument& document) {
  document.prepareToClose();
  if (m_hooks.willClose) m_hooks.willClose(document);
  std::erase_if(m_documents, [&](const auto& held) { return held.get() == &document; });
}

QList<CompositionDocument*> CompositionDocumentsController::unsavedDocuments() const {
  QList<CompositionDocument*> unsaved;
  for (const auto& document : m_documents)
    if (document->isDocumentEdited()) unsaved.append(document.get());
  return unsaved;
}

void CompositionDocumentsController::runSlideshow() const {
  if (!m_documents.empty() && m_hooks.runSlideshow) m_hooks.runSlideshow(documents());
}

}  // namespace document
