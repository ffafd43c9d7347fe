#include "app/preferences/LibraryPage.h"

#include <QFileDialog>
#include <QPushButton>

#include "widgets/TYPathControl.h"

namespace app {

LibraryPage::LibraryPage(foundation::UserDefaults& defaults)
    : PreferenceForm(tr("Library")), m_defaults(defaults) {
  addFolder(tr("Images"), QStringLiteral("imagesLibraryPath"));
  addFolder(tr("Movies"), QStringLiteral("movieLibraryPath"));
  addFolder(tr("Components"), QStringLiteral("componentsLibraryPath"));
  addFolder(tr("Compositions"), QStringLiteral("compositionsLibraryPath"));
  addNote(
      tr("The library lists the folders of images, components and compositions; movies are "
         "looked for in theirs. Click a folder's name to move up to it."));
}

void LibraryPage::addFolder(const QString& label, const QString& key) {
  auto* shown = new widgets::TYPathControl;
  shown->setPath(m_defaults.value(key).toString());
  const auto take = [this, key, shown](const QString& folder) {
    m_defaults.setValue(folder, key);
    shown->setPath(folder);
  };
  connect(shown, &widgets::TYPathControl::itemClicked, this, take);
  auto* choose = new QPushButton(tr("Choose..."));
  choose->setAccessibleName(tr("Choose the folder of %1").arg(label));
  connect(choose, &QPushButton::clicked, this, [this, take, shown] {
    auto* dialog = new QFileDialog(this, tr("Library Folder"), shown->path());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, this, take);
    dialog->open();
  });
  addRow(label, {shown, choose});
}

}  // namespace app
