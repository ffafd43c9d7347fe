#include "inspector/rows/FileRow.h"

#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>

#include "inspector/InspectorContext.h"
#include "model/Composition.h"
#include "model/maintenance/Replacement.h"
#include "widgets/EventGuards.h"

namespace inspector {

FileRow::FileRow(InspectorContext& context, const QString& label, widgets::FileChooser::Kind kind)
    : InspectorRow(context, label), m_field(new QLineEdit), m_kind(kind) {
  widgets::leaveUndoToWindow(*m_field);
  m_field->installEventFilter(this);
  connect(m_field, &QLineEdit::editingFinished, this, [this] {
    if (m_field->isModified()) take(m_field->text());
  });
  auto* button = new QPushButton(tr("Choose..."));
  connect(button, &QPushButton::clicked, this, &FileRow::choose);
  addControl(m_field, 1);
  addControl(button, 0);
}

void FileRow::take(const QString& path) {
  m_field->setModified(false);
  if (!isBound()) return;
  context().change(binding().stepName, [&] { binding().setAll(path.trimmed()); });
  showValues();
}

void FileRow::choose() {
  if (!isBound()) return;
  widgets::FileChooser::open(*this, tr("Choose a File"), m_kind, binding().value().toString(),
                             [this](const QString& path) { take(path); });
}

bool FileRow::exists(const QString& path) const {
  const QFileInfo file(path);
  if (!file.isRelative()) return file.exists();
  const QUrl document = context().composition()->fileURL();
  // A relative path in a document that was never saved leads nowhere yet.
  return !document.isLocalFile() || QFileInfo(document.toLocalFile()).absoluteDir().exists(path);
}

void FileRow::showValues() {
  const bool mixed = binding().isMixed();
  const QString path = mixed ? QString() : binding().value().toString();
  m_field->setPlaceholderText(mixed ? QStringLiteral("—") : QString());
  if (!m_field->isModified() && m_field->text() != path) {
    m_field->setText(path);
    m_field->setToolTip(path);
  }
  if (path.isEmpty() || exists(path))
    setComplaint({});
  else
    setComplaint(tr("“%1” is not there.").arg(QFileInfo(path).fileName()), tr("Locate…"),
                 [this, path] { locate(path); });
}

void FileRow::locate(const QString& missing) {
  widgets::FileChooser::open(
      *this, tr("Locate %1").arg(QFileInfo(missing).fileName()), widgets::FileChooser::AnyFile,
      missing, [this, missing](const QString& path) {
        if (!isBound()) return;
        context().commit();
        (void)model::Replacement(*context().composition()).replaceFile(missing, path);
        context().setNeedsRefresh();
        showValues();
      });
}

void FileRow::nameControls(const QString& name) {
  m_field->setAccessibleName(name);
  if (auto* button = findChild<QPushButton*>())
    button->setAccessibleName(tr("Choose %1").arg(name));
}

void FileRow::dropEntries() {
  m_field->setModified(false);
}

bool FileRow::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop) return false;
  auto* drop = static_cast<QDropEvent*>(event);
  const QList<QUrl> urls = drop->mimeData()->urls();
  if (urls.size() != 1 || !urls.first().isLocalFile()) return false;
  drop->acceptProposedAction();
  if (event->type() == QEvent::Drop) take(urls.first().toLocalFile());
  return true;
}

}  // namespace inspector
