#include <QDir>

#include "app/DocumentSaving.h"
#include "app/MenuMaker.h"
#include "app/ProgramServices.h"
#include "app/RenderStart.h"
#include "app/WindowMenus.h"
#include "document/DocumentCommands.h"
#include "document/NewDocumentMenu.h"
#include "foundation/UserDefaults.h"

namespace app {

using document::DocumentCommands;

namespace {

QString newIdentifier(const QString& format) {
  return QStringLiteral("new ") + format;
}

}  // namespace

void MenuMaker::addNew() {
  QMenu* all = m_menu;
  m_menu = all->addMenu(tr("&New"));
  const document::NewDocumentMenu formats;
  for (const auto& item : formats.items()) {
    if (item.isSeparator())
      separate();
    else
      add({.identifier = newIdentifier(item.title),
           .text = item.title,
           .run = [&window = m_window, title = item.title] {
             window.services().newDocument(title);
           }});
  }
  m_menu = all;
  registerNewDocumentMenu(m_window);
}

void registerNewDocumentMenu(TYWindowController& window) {
  const document::NewDocumentMenu formats;
  const qsizetype standard = formats.indexOf(
      model::VideoResolution::defaultVideoResolution(window.services().defaults()).title());
  for (qsizetype i = 0; i < formats.items().size(); ++i)
    if (const auto& item = formats.items().at(i); !item.isSeparator())
      window.actions()
          .action(newIdentifier(item.title))
          ->setShortcuts(i == standard ? QList<QKeySequence>{QKeySequence::New}
                                       : QList<QKeySequence>());
}

void MenuMaker::addRecent() {
  QMenu* recent = m_menu->addMenu(tr("Open &Recent"));
  recent->setObjectName(QStringLiteral("recent"));
  QObject::connect(recent, &QMenu::aboutToShow, recent, [recent, &window = m_window] {
    recent->clear();
    const QStringList paths = window.services().recentDocuments();
    for (const QString& path : paths)
      QObject::connect(recent->addAction(QDir::toNativeSeparators(path)), &QAction::triggered,
                       &window, [&window, path] { window.services().openDocument(path); });
    recent->addSeparator();
    QAction* clear = recent->addAction(tr("Clear List"));
    clear->setEnabled(!paths.isEmpty());
    QObject::connect(clear, &QAction::triggered, &window,
                     [&window] { window.services().clearRecentDocuments(); });
  });
}

void MenuMaker::addFile() {
  begin(tr("&File"));
  TYWindowController& window = m_window;
  const auto wasSaved = [&window] { return !window.document().fileURL().isEmpty(); };
  addNew();
  add({.identifier = QStringLiteral("open"),
       .text = tr("&Open…"),
       .shortcuts = {QKeySequence::Open},
       .run = [&window] { window.services().chooseDocuments(); }});
  addRecent();
  separate();
  add({.identifier = QStringLiteral("save"),
       .text = tr("&Save"),
       .shortcuts = {QKeySequence::Save},
       .run = [&window] { window.saving().save(); }});
  add({.identifier = QStringLiteral("saveAs"),
       .text = tr("Save &As…"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)},
       .run = [&window] { window.saving().saveAs(); }});
  add({.identifier = QStringLiteral("saveCopy"), .text = tr("Save a Cop&y…"), .run = [&window] {
         window.saving().saveCopy();
       }});
  add({.identifier = QStringLiteral("revert"),
       .text = tr("Re&vert…"),
       .run = [&window] { window.saving().revert(); },
       .canRun = [&window, wasSaved] { return wasSaved() && window.document().isDocumentEdited(); },
       .needs = tr("There is nothing that was not saved.")});
  separate();
  add({.identifier = QStringLiteral("exportQuartzComposition"),
       .text = tr("&Export…"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_E)},
       .run = [&window] { window.saving().exportComposition(); },
       .canRun = hasComposition()});
  add({.identifier = QStringLiteral("render"),
       .text = tr("Ren&der to Movie…"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E)},
       .run = [&window] { RenderStart::ask(window); },
       .canRun = hasComposition()});
  addMaintenance();
  separate();
  add({.identifier = QStringLiteral("close"),
       .text = tr("&Close"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_W)},
       .run = [&window] { window.close(); }});
  add({.identifier = QStringLiteral("quit"),
       .text = tr("&Quit"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_Q)},
       .run = [&window] { window.services().quit(); }});
}

void MenuMaker::addMaintenance() {
  TYWindowController& window = m_window;
  const auto report = [&window](model::CommandReport (DocumentCommands::*command)()) {
    return [&window, command] {
      DocumentCommands commands(window.document());
      window.showReport((commands.*command)());
    };
  };
  add({.identifier = QStringLiteral("upgradeComposition"),
       .text = tr("&Upgrade Components"),
       .run = report(&DocumentCommands::upgradeComposition),
       .canRun = hasComposition()});
  add({.identifier = QStringLiteral("makePathsRelative"),
       .text = tr("Make &Paths Relative"),
       .run = report(&DocumentCommands::makePathsRelative),
       .canRun = hasComposition()});
  add({.identifier = QStringLiteral("embedResources"),
       .text = tr("E&mbed Resources"),
       .run = report(&DocumentCommands::embedResources),
       .canRun = hasComposition()});
}

}  // namespace app
