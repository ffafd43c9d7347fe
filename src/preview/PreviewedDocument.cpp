#include "preview/PreviewedDocument.h"

namespace preview {

using document::CompositionDocument;

namespace {
constexpr int elsewhere = -1;
/// From an edit to its export: what follows within that goes along with it.
constexpr std::chrono::milliseconds leastWait(100);
/// Whatever exporting costs, an edit is to be seen within half a second.
constexpr std::chrono::milliseconds mostWait(300);
}  // namespace

PreviewedDocument::PreviewedDocument(QObject* parent) : QObject(parent) {
  m_soon.setSingleShot(true);
  m_soon.setInterval(leastWait);
  connect(&m_soon, &QTimer::timeout, this, &PreviewedDocument::showRequested);
}

void PreviewedDocument::show(CompositionDocument& document) {
  letGo();
  m_document = &document;
  noteShown({});
  observe();
  m_replacement = document.observeReplacement([this](const document::PersistentPackageDocument&) {
    m_shownIndex = elsewhere;
    m_changes = {};
    disconnect(m_history);
    // The new objects are not there yet.
    const auto goOn = [this] {
      observe();
      takeChange();
    };
    QMetaObject::invokeMethod(this, goOn, Qt::QueuedConnection);
  });
}

void PreviewedDocument::letGo() {
  m_soon.stop();
  m_replacement = {};
  m_changes = {};
  disconnect(m_history);
  m_document = nullptr;
  setOutdated(false);
}

void PreviewedDocument::observe() {
  if (!m_document) return;
  m_changes =
      m_document->context().observeChanges([this](const store::ChangeSet&) { takeChange(); });
  m_history = connect(&m_document->context().history(), &QUndoStack::indexChanged, this, [this] {
    m_historyMoved = true;
    checkSoon();
  });
}

void PreviewedDocument::takeChange() {
  if (m_follows && !m_soon.isActive()) m_soon.start();
  checkSoon();
}

/// The history moves after a change is told.
void PreviewedDocument::checkSoon() {
  if (std::exchange(m_isChecking, true)) return;
  QMetaObject::invokeMethod(this, &PreviewedDocument::check, Qt::QueuedConnection);
}

void PreviewedDocument::check() {
  m_isChecking = false;
  if (!m_document) return;
  // A step that grows changes the document and leaves the history where it was.
  const bool grew = !std::exchange(m_historyMoved, false);
  setOutdated(grew || m_document->context().history().index() != m_shownIndex);
}

void PreviewedDocument::noteShown(std::chrono::milliseconds cost) {
  if (!m_document) return;
  m_shownIndex = m_document->context().history().index();
  // Editing a large document must not be nothing but exporting it.
  m_soon.setInterval(std::clamp(2 * cost, leastWait, mostWait));
  setOutdated(false);
}

void PreviewedDocument::setFollows(bool follows) {
  m_follows = follows;
  if (!follows) m_soon.stop();
  if (follows && m_isOutdated) m_soon.start();
}

void PreviewedDocument::setOutdated(bool outdated) {
  if (std::exchange(m_isOutdated, outdated) != outdated) Q_EMIT outdatedChanged(outdated);
}

}  // namespace preview
