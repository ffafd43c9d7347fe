#include "app/CanvasMenu.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QMenu>
#include <QUrl>

#include "app/TYWindowController.h"
#include "canvas/CompositionView.h"
#include "model/Composition.h"

namespace app {

namespace {

QString translated(const char* text) {
  return QCoreApplication::translate("CanvasMenu", text);
}

/// Adds commands by identifier; an empty one is a line between them.
void addCommands(QMenu& menu, TYWindowController& window, const QStringList& identifiers) {
  for (const QString& identifier : identifiers) {
    if (identifier.isEmpty())
      menu.addSeparator();
    else if (QAction* action = window.actions().action(identifier))
      menu.addAction(action);
  }
}

QStringList commands(const char* identifiers) {
  return QString::fromLatin1(identifiers).split(u' ');
}

void addRevealFile(QMenu& menu, const model::QuartzComponent& component) {
  const QFileInfo file(component.compositionFilename());
  QAction* reveal = menu.addAction(translated("Show &File in Folder"));
  reveal->setEnabled(file.isFile());
  QObject::connect(reveal, &QAction::triggered, reveal, [folder = file.absolutePath()] {
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
  });
}

void addForComponents(QMenu& menu, TYWindowController& window,
                      const QList<model::QuartzComponent*>& selected) {
  if (selected.size() == 1) {
    model::QuartzComponent* component = selected.first();
    QAction* edit = menu.addAction(translated("&Edit Text"));
    edit->setShortcut(QKeySequence(Qt::Key_F2));
    edit->setEnabled(canvas::CompositionView::hasText(*component));
    QObject::connect(edit, &QAction::triggered, &window,
                     [&window, component] { window.view().editText(*component); });
    menu.addSeparator();
  }
  addCommands(menu, window, commands("cut copy paste duplicate delete"));
  menu.addSeparator();
  addCommands(menu, window, commands("bringToFront sendForward sendBackward sendToBack"));
  QMenu* align = menu.addMenu(translated("&Align"));
  addCommands(*align, window,
              commands("AlignLeft AlignHCenter AlignRight AlignTop AlignVCenter AlignBottom  "
                       "DistributeTop DistributeVCenter DistributeBottom DistributeLeft "
                       "DistributeHCenter DistributeRight"));
  menu.addSeparator();
  addCommands(menu, window, commands("sizeToFit soloComponents"));
  QAction* hide = menu.addAction(translated("&Hide"));
  QObject::connect(hide, &QAction::triggered, &window, [&window, selected] {
    const store::UndoStep step(window.document().context(), translated("Hide"));
    for (model::QuartzComponent* component : selected)
      component->setVisibleInCompositionEditor(false);
  });
  addCommands(menu, window, commands("showAllComponents"));
  if (selected.size() != 1) return;
  menu.addSeparator();
  addRevealFile(menu, *selected.first());
}

}  // namespace

void fillCanvasMenu(QMenu& menu, TYWindowController& window,
                    const model::Composition& composition) {
  // Undo names and what can be pasted may have changed since the last event.
  window.actions().update();
  const auto selected = composition.selectedComponents();
  if (!selected.isEmpty()) return addForComponents(menu, window, selected);
  addCommands(menu, window,
              commands("paste selectAll showAllComponents  zoomIn zoomOut") +
                  QStringList{QStringLiteral("zoom 0"), QStringLiteral("zoom 100"), QString()} +
                  commands("showsRulers guidesLocked showsSafeZones"));
}

}  // namespace app
