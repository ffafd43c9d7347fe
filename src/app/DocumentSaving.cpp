#include "app/DocumentSaving.h"

#include <QFileInfo>
#include <QStandardPaths>

#include "app/PackageDialog.h"
#include "app/ProgramServices.h"
#include "app/TYWindowController.h"
#include "foundation/UserDefaults.h"
#include "widgets/TYAlert.h"

namespace app {

using document::CompositionDocument;
using document::SaveOperation;
using widgets::TYAlert;

namespace {

const QString folderKey = QStringLiteral("documentsFolder");

QString lastFolder(const TYWindowController& window) {
  const QUrl& url = window.document().fileURL();
  if (!url.isEmpty()) return QFileInfo(url.toLocalFile()).path();
  const QString kept = window.services().defaults().value(folderKey).toString();
  return kept.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                        : kept;
}

}  // namespace

void DocumentSaving::save(Done done) {
  CompositionDocument& document = m_window.document();
  document.followPackage();
  if (document.fileURL().isEmpty()) {
    saveAs(std::move(done));
    return;
  }
  if (document.storeChangedOnDisk()) {
    overwriteOrAsk(std::move(done));
    return;
  }
  write(document.fileURL().toLocalFile(), SaveOperation::Save, done);
}

void DocumentSaving::overwriteOrAsk(Done done) {
  const QString path = m_window.document().fileURL().toLocalFile();
  const bool isThere = QFileInfo::exists(path);
  TYAlert::begin(&m_window,
                 {.title = isThere ? tr("The document was changed by another program")
                                   : tr("The document is no longer where it was"),
                  .text = isThere ? tr("Saving replaces those changes with yours.")
                                  : tr("\"%1\" is gone. Saving makes it anew.").arg(path),
                  .kind = TYAlert::Kind::Warning,
                  .list = {},
                  .defaultButton = tr("Save As…"),
                  .alternateButton = tr("Cancel"),
                  .otherButton = isThere ? tr("Replace") : tr("Save There"),
                  .preferencesKey = {}},
                 [this, path, isThere, done](TYAlert::Answer answer) {
                   if (answer == TYAlert::Answer::Default) saveAs(done);
                   if (answer == TYAlert::Answer::Other)
                     write(path, isThere ? SaveOperation::Save : SaveOperation::SaveAs, done);
                   if (answer == TYAlert::Answer::Alternate && done) done(false);
                 });
}

void DocumentSaving::saveAs(Done done) {
  askForPlace(tr("Save As"), SaveOperation::SaveAs, std::move(done));
}

void DocumentSaving::saveCopy() {
  askForPlace(tr("Save a Copy"), SaveOperation::SaveTo, {});
}

void DocumentSaving::askForPlace(const QString& title, SaveOperation operation, Done done) {
  auto* dialog =
      new PackageDialog(&m_window, PackageDialog::Purpose::Save, title, lastFolder(m_window));
  dialog->selectFile(m_window.document().displayName() + QStringLiteral(".composition"));
  QObject::connect(dialog, &QDialog::finished, &m_window, [this, dialog, operation, done](int) {
    if (dialog->path().isEmpty()) {
      if (done) done(false);
      return;
    }
    m_window.services().defaults().setValue(QFileInfo(dialog->path()).path(), folderKey);
    write(dialog->path(), operation, done);
  });
  dialog->open();
}

void DocumentSaving::write(const QString& path, SaveOperation operation, const Done& done) {
  CompositionDocument& document = m_window.document();
  // Onto itself, "as" writes nothing; whoever chooses the document's own place means to save.
  if (document.writesNothing(QUrl::fromLocalFile(path), operation)) operation = SaveOperation::Save;
  const auto saved = document.saveToURL(QUrl::fromLocalFile(path), operation);
  if (saved) {
    if (operation != SaveOperation::SaveTo) m_window.services().documentWasSaved(document);
    if (!document.saveWarnings().isEmpty())
      m_window.showWarnings(tr("The document was saved, but not everything beside it"),
                            document.saveWarnings());
  } else {
    m_window.showError(tr("The document could not be saved"), saved.error());
  }
  m_window.setNeedsUpdate();
  if (done) done(saved.has_value());
}

void DocumentSaving::revert() {
  TYAlert::begin(&m_window,
                 {.title = tr("Revert to the saved document?"),
                  .text = tr("Everything since the last save is lost, and cannot be undone."),
                  .kind = TYAlert::Kind::Warning,
                  .list = {},
                  .defaultButton = tr("Revert"),
                  .alternateButton = tr("Cancel"),
                  .otherButton = {},
                  .preferencesKey = {}},
                 [this](TYAlert::Answer answer) {
                   if (answer != TYAlert::Answer::Default) return;
                   CompositionDocument& document = m_window.document();
                   if (const auto read = document.revertToContentsOfURL(document.fileURL()); !read)
                     m_window.showError(tr("The document could not be read"), read.error());
                   m_window.setNeedsUpdate();
                 });
}

void DocumentSaving::exportComposition() {
  auto* dialog = new QFileDialog(&m_window, tr("Export"), lastFolder(m_window));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setLabelText(QFileDialog::FileName, tr("Export As:"));
  dialog->setNameFilter(tr("Quartz compositions (*.qtz)"));
  dialog->setDefaultSuffix(QStringLiteral("qtz"));
  dialog->selectFile(m_window.document().displayName() + QStringLiteral(".qtz"));
  QObject::connect(dialog, &QFileDialog::fileSelected, &m_window, [this](const QString& path) {
    if (const auto done = m_window.document().exportQuartzComposition(path); !done)
      m_window.showError(tr("The composition could not be exported"), done.error());
  });
  dialog->open();
}

}  // namespace app
