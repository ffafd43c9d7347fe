#include <QGuiApplication>
#include <QScreen>

#include "app/MenuMaker.h"
#include "app/ProgramServices.h"
#include "preview/DisplayName.h"
#include "preview/TYPreviewController.h"

namespace app {

using preview::DisplayName;
using preview::TYPreviewController;

namespace {

/// A player that is open already shows what it shows.
void needPlayer(const TYWindowController& window) {
  if (!TYPreviewController::shared())
    TYPreviewController::togglePreviewForCompositionDocument(window.document());
}

void listScreens(QMenu& menu, TYWindowController& window) {
  menu.clear();
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QString name = DisplayName::name(*screen);
    QAction* action = menu.addAction(name);
    action->setEnabled(window.composition() && DisplayName::screenWithName(name));
    QObject::connect(action, &QAction::triggered, &window, [&window, name] {
      needPlayer(window);
      TYPreviewController::showFullscreenOnScreen(name);
    });
  }
}

}  // namespace

void MenuMaker::addPreview() {
  TYWindowController& window = m_window;
  add({.identifier = QStringLiteral("showPreview"),
       .text = tr("Previe&w"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_P)},
       .run =
           [&window] {
             TYPreviewController::togglePreviewForCompositionDocument(window.document());
           },
       .canRun = hasComposition()});
  add({.identifier = QStringLiteral("togglePreviewFullscreen"),
       .text = tr("Preview in F&ull Screen"),
       .shortcuts = {QKeySequence(Qt::SHIFT | Qt::Key_F11)},
       .run =
           [&window] {
             needPlayer(window);
             TYPreviewController::togglePreviewFullscreen();
           },
       .canRun = hasComposition()});
  QMenu* screens = m_menu->addMenu(tr("Preview on S&creen"));
  QObject::connect(screens, &QMenu::aboutToShow, &window,
                   [screens, &window] { listScreens(*screens, window); });
  add({.identifier = QStringLiteral("runSlideshow"),
       .text = tr("S&lideshow of All Documents"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P)},
       .run = [&window] { window.services().runSlideshow(); }});
}

}  // namespace app
