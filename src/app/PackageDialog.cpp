#include "app/PackageDialog.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "document/PackageLayout.h"

namespace app {

using document::PackageLayout;

PackageDialog::PackageDialog(QWidget* parent, Purpose purpose, const QString& title,
                             const QString& folder)
    : QFileDialog(parent, title, folder), m_purpose(purpose) {
  // The desktop's own dialog would go into a document instead of choosing it.
  setOption(QFileDialog::DontUseNativeDialog);
  setAttribute(Qt::WA_DeleteOnClose);
  setFileMode(purpose == Purpose::Open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  setAcceptMode(purpose == Purpose::Open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  setNameFilters({tr("Composition documents (*.composition data.xml)"), tr("All files (*)")});
  if (purpose == Purpose::Save) setLabelText(QFileDialog::Accept, tr("Save"));
  connect(this, &QFileDialog::directoryEntered, this, [this](const QString& entered) {
    if (PackageLayout::isPackageName(entered) && m_purpose == Purpose::Open) choose(entered);
  });
}

void PackageDialog::accept() {
  const QStringList selected = selectedFiles();
  if (selected.isEmpty()) return;
  const QString path = selected.first();
  const QFileInfo info(path);
  if (m_purpose == Purpose::Open) {
    if (info.isDir() && !PackageLayout::isPackageName(path)) {
      setDirectory(path);
      return;
    }
    if (info.exists()) choose(path);
    return;
  }
  if (info.isDir() && !PackageLayout::isPackageName(path)) {
    setDirectory(path);
    return;
  }
  const QString target =
      PackageLayout::isPackageName(path) ? path : path + u'.' + PackageLayout::extension();
  if (!QFileInfo::exists(target) || mayReplace(target)) choose(target);
}

bool PackageDialog::mayReplace(const QString& path) {
  return QMessageBox::question(
             this, windowTitle(),
             tr("\"%1\" exists already. Replace it?").arg(QFileInfo(path).fileName())) ==
         QMessageBox::Yes;
}

void PackageDialog::choose(const QString& path) {
  if (!m_path.isEmpty()) return;
  m_path = path;
  Q_EMIT pathChosen(path);
  done(QDialog::Accepted);
}

}  // namespace app
