#include "app/WindowMenus.h"

#include <QDockWidget>

#include "app/CanvasDefaults.h"
#include "app/MenuMaker.h"
#include "app/PanelFocus.h"
#include "app/ProgramServices.h"
#include "canvas/CompositionView.h"
#include "document/DocumentCommands.h"
#include "inspector/ValueTransformers.h"
#include "timeline/TimelinePanel.h"
#include "widgets/ZoomSteps.h"

namespace app {

using document::DocumentCommands;
using model::Composition;

void MenuMaker::addForSelection(const QString& id, const QString& text,
                                const QList<QKeySequence>& keys, void (Composition::*operation)()) {
  add({.identifier = id,
       .text = text,
       .shortcuts = keys,
       .run = [&window = m_window, operation] { (window.composition()->*operation)(); },
       .canRun = hasSelection(),
       .needs = selectFirst()});
}

void MenuMaker::addComponents(const QList<canvas::ToolbarComponents::Entry>& entries) {
  for (const auto& entry : entries) {
    if (entry.isSeparator()) {
      separate();
    } else if (!entry.subcomponents.isEmpty()) {
      QMenu* menu = m_menu;
      m_menu = menu->addMenu(entry.title);
      addComponents(entry.subcomponents);
      m_menu = menu;
    } else if (!entry.component.isEmpty()) {
      add({.identifier = QStringLiteral("add ") + entry.component,
           .text = entry.title,
           .run = [&window = m_window,
                   name = entry.component] { window.addStandardComponent(name); },
           .canRun = hasComposition()});
    }
  }
}

void MenuMaker::addComponent() {
  begin(tr("&Component"));
  TYWindowController& window = m_window;
  QMenu* menu = m_menu;
  m_menu = menu->addMenu(tr("A&dd"));
  addComponents(canvas::ToolbarComponents::shared().entries());
  m_menu = menu;
  separate();
  addForSelection(QStringLiteral("sizeToFit"), tr("Size to &Fit"),
                  {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F)},
                  &Composition::sizeToFitSelection);
  separate();
  addForSelection(QStringLiteral("soloComponents"), tr("&Solo"),
                  {QKeySequence(Qt::CTRL | Qt::Key_H)}, &Composition::soloSelectedComponents);
  add({.identifier = QStringLiteral("showAllComponents"),
       .text = tr("Show &All"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_H)},
       .run = [&window] { window.composition()->showAllComponents(); },
       .canRun = hasComposition()});
}

void MenuMaker::addArrange() {
  begin(tr("&Arrange"));
  TYWindowController& window = m_window;
  addForSelection(QStringLiteral("bringToFront"), tr("Bring to Fron&t"),
                  {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_BracketRight)},
                  &Composition::bringSelectionToFront);
  addForSelection(QStringLiteral("sendForward"), tr("Bring &Forward"),
                  {QKeySequence(Qt::CTRL | Qt::Key_BracketRight)}, &Composition::sendForward);
  addForSelection(QStringLiteral("sendBackward"), tr("Send &Backward"),
                  {QKeySequence(Qt::CTRL | Qt::Key_BracketLeft)}, &Composition::sendBackward);
  addForSelection(QStringLiteral("sendToBack"), tr("Send to Bac&k"),
                  {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_BracketLeft)},
                  &Composition::sendSelectionToBack);
  add({.identifier = QStringLiteral("swapSelected"),
       .text = tr("&Swap Selected"),
       .run =
           [&window] {
             if (const auto report = window.composition()->swapSelected())
               window.showReport(*report);
           },
       .canRun = hasComposition()});
  separate();
  addAlign(QStringLiteral("Align"),
           {QStringLiteral("Left"), QStringLiteral("HCenter"), QStringLiteral("Right"),
            QStringLiteral("Top"), QStringLiteral("VCenter"), QStringLiteral("Bottom")},
           {tr("Align &Left Edges"), tr("Align Horizontal &Centers"), tr("Align &Right Edges"),
            tr("Align To&p Edges"), tr("Align &Vertical Centers"), tr("Align Botto&m Edges")},
           0, 2);
  separate();
  addAlign(QStringLiteral("Distribute"),
           {QStringLiteral("Top"), QStringLiteral("VCenter"), QStringLiteral("Bottom"),
            QStringLiteral("Left"), QStringLiteral("HCenter"), QStringLiteral("Right")},
           {tr("Distribute Top Edges"), tr("Distribute Vertical Centers"),
            tr("Distribute Bottom Edges"), tr("Distribute Left Edges"),
            tr("Distribute Horizontal Centers"), tr("Distribute Right Edges")},
           6, 3);
}

void MenuMaker::addAlign(const QString& kind, const QStringList& sides, const QStringList& texts,
                         int firstTag, qsizetype needed) {
  for (qsizetype i = 0; i < sides.size(); ++i)
    add({.identifier = kind + sides.at(i),
         .text = texts.at(i),
         .run = [&window = m_window,
                 tag = firstTag + static_cast<int>(i)] { window.alignment().executeMenu(tag); },
         .canRun =
             [&window = m_window, needed] {
               if (!window.composition()) return false;
               const qsizetype count = window.composition()->selectedComponents().size();
               return needed == 2 ? inspector::CountGreaterThanOne::transformedValue(count)
                                  : inspector::CountGreaterThanTwo::transformedValue(count);
             },
         .needs = needed == 2 ? tr("Select two or more components.")
                              : tr("Select three or more components.")});
}

void MenuMaker::addZoom() {
  TYWindowController& window = m_window;
  add({.identifier = QStringLiteral("zoomIn"),
       .text = tr("Zoom &In"),
       .shortcuts = {QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)},
       .run = [&window] { window.view().zoomIn(); },
       .canRun = hasComposition()});
  add({.identifier = QStringLiteral("zoomOut"),
       .text = tr("Zoom &Out"),
       .shortcuts = {QKeySequence::ZoomOut},
       .run = [&window] { window.view().zoomOut(); },
       .canRun = hasComposition()});
  QList<qint32> modes = widgets::ZoomSteps::menuModes();
  modes.prepend(widgets::ZoomSteps::fit);
  for (const qint32 mode : modes)
    add({.identifier = QStringLiteral("zoom %1").arg(mode),
         .text = mode == 0 ? tr("&Fit") : QStringLiteral("%1 %").arg(mode),
         .shortcuts = mode == 0     ? QList<QKeySequence>{QKeySequence(Qt::CTRL | Qt::Key_0)}
                      : mode == 100 ? QList<QKeySequence>{QKeySequence(Qt::CTRL | Qt::Key_1)}
                                    : QList<QKeySequence>(),
         .run = [&window, mode] { window.composition()->setZoomMode(mode); },
         .canRun = hasComposition(),
         .isChecked =
             [&window, mode] {
               return window.composition() && window.composition()->zoomMode() == mode;
             }});
}

void MenuMaker::addOverlays() {
  TYWindowController& window = m_window;
  add({.identifier = QStringLiteral("showsRulers"),
       .text = tr("&Guides"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_R)},
       .run =
           [&window] {
             CanvasDefaults(window.services()).setShowsRulers(!window.composition()->showsRulers());
           },
       .canRun = hasComposition(),
       .isChecked =
           [&window] { return window.composition() && window.composition()->showsRulers(); }});
  add({.identifier = QStringLiteral("guidesLocked"),
       .text = tr("&Lock Guides"),
       .run =
           [&window] {
             CanvasDefaults(window.services()).setGuidesLocked(!window.view().guidesLocked());
             window.view().setGuidesLocked(!window.view().guidesLocked());
           },
       .canRun = hasComposition(),
       .isChecked = [&window] { return window.view().guidesLocked(); }});
  add({.identifier = QStringLiteral("showsSafeZones"),
       .text = tr("&Safe Areas"),
       .run =
           [&window] {
             CanvasDefaults(window.services())
                 .setShowsSafeZones(!window.composition()->showsSafeZones());
           },
       .canRun = hasComposition(),
       .isChecked =
           [&window] { return window.composition() && window.composition()->showsSafeZones(); }});
}

void MenuMaker::addView() {
  begin(tr("&View"));
  TYWindowController& window = m_window;
  addZoom();
  separate();
  addOverlays();
  separate();
  addPanels();
  separate();
  add({.identifier = QStringLiteral("fullScreen"),
       .text = tr("F&ull Screen"),
       .shortcuts = {QKeySequence(Qt::Key_F11)},
       .run = [&window] { window.setWindowState(window.windowState() ^ Qt::WindowFullScreen); },
       .isChecked = [&window] { return window.isFullScreen(); }});
}

void MenuMaker::addPanels() {
  struct Panel {
    QString name;
    QString text;
    Qt::Key key;
  };
  const QList<Panel> panels{{QStringLiteral("library"), tr("Li&brary"), Qt::Key_L},
                            {QStringLiteral("inspector"), tr("I&nspector"), Qt::Key_I},
                            {QStringLiteral("timeline"), tr("&Timeline"), Qt::Key_T},
                            {QStringLiteral("history"), tr("Histor&y"), Qt::Key_Y}};
  for (const auto& [name, text, key] : panels) {
    QAction* toggle = m_window.findChild<QDockWidget*>(name)->toggleViewAction();
    toggle->setText(text);
    toggle->setShortcut(QKeySequence(Qt::CTRL | Qt::ALT | key));
    m_menu->addAction(toggle);
  }
}

void MenuMaker::addPlayback() {
  begin(tr("&Playback"));
  const auto command = [this](const char* id, const QString& text, const QKeySequence& key,
                              void (DocumentCommands::*operation)()) {
    add({.identifier = QString::fromLatin1(id),
         .text = text,
         .shortcuts = key.isEmpty() ? QList<QKeySequence>() : QList<QKeySequence>{key},
         .run =
             [&window = m_window, operation] {
               DocumentCommands commands(window.document());
               (commands.*operation)();
             },
         .canRun = hasComposition()});
  };
  command("play", tr("&Play"), QKeySequence(Qt::Key_Space), &DocumentCommands::play);
  separate();
  command("jumpToBeginning", tr("Go to &Beginning"), QKeySequence(Qt::Key_Home),
          &DocumentCommands::jumpToBeginning);
  command("jumpToEnd", tr("Go to &End"), QKeySequence(Qt::Key_End), &DocumentCommands::jumpToEnd);
  command("jumpToNextFrame", tr("&Next Frame"), QKeySequence(Qt::Key_Period),
          &DocumentCommands::jumpToNextFrame);
  command("jumpToPreviousFrame", tr("Pre&vious Frame"), QKeySequence(Qt::Key_Comma),
          &DocumentCommands::jumpToPreviousFrame);
  command("jumpToNextKeyframe", tr("Next &Key Frame"), QKeySequence(Qt::SHIFT | Qt::Key_Period),
          &DocumentCommands::jumpToNextKeyframe);
  command("jumpToPreviousKeyframe", tr("Previous Ke&y Frame"),
          QKeySequence(Qt::SHIFT | Qt::Key_Comma), &DocumentCommands::jumpToPreviousKeyframe);
  command("jumpToNextStopFrame", tr("Next Stop F&rame"), QKeySequence(Qt::ALT | Qt::Key_Period),
          &DocumentCommands::jumpToNextStopFrame);
  command("jumpToPreviousStopFrame", tr("Previous Stop Fr&ame"),
          QKeySequence(Qt::ALT | Qt::Key_Comma), &DocumentCommands::jumpToPreviousStopFrame);
  separate();
  command("addStopFrame", tr("A&dd Stop Frame"), QKeySequence(Qt::SHIFT | Qt::Key_M),
          &DocumentCommands::addStopFrame);
  command("toggleStopframe", tr("&Stop Frame"), QKeySequence(Qt::Key_M),
          &DocumentCommands::toggleStopframe);
  add({.identifier = QStringLiteral("toggleKeyframe"),
       .text = tr("Key Frame in &Timeline Row"),
       .shortcuts = {QKeySequence(Qt::Key_K)},
       .run = [&window = m_window] { window.timelinePanel().toggleKeyFrame(); },
       .canRun = hasComposition()});
  command("togglePosterframe", tr("P&oster Frame"), {}, &DocumentCommands::togglePosterframe);
  separate();
  addPreview();
}

void MenuMaker::addWindow() {
  begin(tr("&Window"));
  TYWindowController& window = m_window;
  add({.identifier = QStringLiteral("minimize"), .text = tr("&Minimize"), .run = [&window] {
         window.showMinimized();
       }});
  add({.identifier = QStringLiteral("nextPanel"),
       .text = tr("&Next Panel"),
       .shortcuts = {QKeySequence(Qt::Key_F6)},
       .run = [&window] { window.panelFocus().step(1); }});
  add({.identifier = QStringLiteral("previousPanel"),
       .text = tr("&Previous Panel"),
       .shortcuts = {QKeySequence(Qt::SHIFT | Qt::Key_F6)},
       .run = [&window] { window.panelFocus().step(-1); }});
  m_menu->addSeparator();
  QMenu* menu = m_menu;
  QObject::connect(menu, &QMenu::aboutToShow, &window, [menu, &window] {
    for (QAction* action : menu->actions())
      if (action->data().toBool()) delete action;
    for (document::CompositionDocument* document : window.services().documents()) {
      QAction* action = menu->addAction(document->displayName());
      action->setData(true);
      action->setCheckable(true);
      action->setChecked(document == &window.document());
      QObject::connect(action, &QAction::triggered, &window,
                       [&window, document] { window.services().showDocument(*document); });
    }
  });
}

void MenuMaker::addHelp() {
  begin(tr("&Help"));
  TYWindowController& window = m_window;
  add({.identifier = QStringLiteral("showHelp"),
       .text = tr("User &Guide"),
       .shortcuts = {QKeySequence(Qt::Key_F1)},
       .run = [&window] { window.services().showHelp(); }});
  add({.identifier = QStringLiteral("aboutPanel"), .text = tr("&About"), .run = [&window] {
         window.services().showAbout();
       }});
}

void addWindowMenus(TYWindowController& window, QMenuBar& bar) {
  MenuMaker maker(window, bar);
  maker.addFile();
  maker.addEdit();
  maker.addComponent();
  maker.addArrange();
  maker.addView();
  maker.addPlayback();
  maker.addWindow();
  maker.addHelp();
}

}  // namespace app
