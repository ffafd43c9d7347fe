#include "app/TYWindowController.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QFileInfo>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QVBoxLayout>

#include "app/CanvasDefaults.h"
#include "app/CanvasMenu.h"
#include "app/DockTitle.h"
#include "app/DocumentFindings.h"
#include "app/DocumentSaving.h"
#include "app/FindingsMending.h"
#include "app/FindingsPanel.h"
#include "app/HistoryPanel.h"
#include "app/MainToolbar.h"
#include "app/PSDImportSheet.h"
#include "app/PanelFocus.h"
#include "app/ProgramServices.h"
#include "app/RenderProgress.h"
#include "app/StatusLine.h"
#include "app/WindowMenus.h"
#include "canvas/CompositionView.h"
#include "canvas/TYZoomScrollView.h"
#include "document/KeyFrameClipboard.h"
#include "foundation/Log.h"
#include "foundation/UserDefaults.h"
#include "inspector/TYInspectorController.h"
#include "library/TYLibraryController.h"
#include "model/Composition.h"
#include "timeline/TimelinePanel.h"
#include "widgets/TYAlert.h"
#include "widgets/TYSegmentedControl.h"

namespace app {

using document::CompositionDocument;
using widgets::TYAlert;

namespace {

QList<library::TYLibraryController::Place> fixedPlaces(
    const model::StandardComponents& components) {
  const QString resources = QFileInfo(components.folder()).path();
  return {{TYWindowController::tr("Components"), QStringLiteral("Components"), components.folder()},
          {TYWindowController::tr("Examples"), QStringLiteral("Examples"),
           resources + QStringLiteral("/examples/harbour")}};
}

}  // namespace

TYWindowController::TYWindowController(CompositionDocument& document, ProgramServices& services)
    : m_document(document),
      m_services(services),
      m_saving(std::make_unique<DocumentSaving>(*this)) {
  setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);
  setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
  setCorner(Qt::BottomLeftCorner, Qt::BottomDockWidgetArea);
  makePanels();
  makeFindings();
  makeMenus();
  makePanelFocus();
  m_replacement = m_document.observeReplacement([this](const auto&) {
    letGo();
    // The new contents are there when the document is through with reading them.
    QMetaObject::invokeMethod(this, &TYWindowController::takeComposition, Qt::QueuedConnection);
  });
  takeComposition();
  m_layout.restore(m_services.defaults());
}

TYWindowController::~TYWindowController() {
  letGo();
}

void TYWindowController::letGo() {
  m_subscriptions.clear();
  m_view->cleanUp();
  m_inspector->setComposition(nullptr);
  m_timeline->setComposition(nullptr);
  m_history->setContext(nullptr);
  m_alignment.setComposition(nullptr);
  m_findings->setComposition(nullptr);
}

void TYWindowController::makePanels() {
  auto* middle = new QWidget;
  auto* column = new QVBoxLayout(middle);
  column->setContentsMargins(0, 0, 0, 0);
  m_scrollView = new canvas::TYZoomScrollView;
  m_view = new canvas::CompositionView(m_document.standardComponents());
  m_view->setHost(*this);
  m_scrollView->setDocumentView(m_view);
  column->addWidget(m_scrollView);
  setCentralWidget(middle);

  m_library = new library::TYLibraryController(m_services.defaults(),
                                               fixedPlaces(m_document.standardComponents()));
  connect(m_library, &library::TYLibraryController::openRequested, this,
          [this](const QString& path) { m_services.openDocument(path); });
  connect(m_library, &library::TYLibraryController::addRequested, this,
          [this](const QString& path) { m_view->addComponentsFromPaths({path}, false); });
  auto* libraryTitle = new DockTitle(
      *makeDock(QStringLiteral("library"), tr("Library"), m_library, Qt::LeftDockWidgetArea),
      QStringLiteral("Library"));
  auto* looks = new widgets::TYSegmentedControl;
  looks->setAccessibleName(tr("How files are shown"));
  looks->addGlyph(QStringLiteral("GridView"), tr("Tiles"));
  looks->addGlyph(QStringLiteral("ListView"), tr("List"));
  looks->setSelectedSegment(m_library->showsGrid() ? 0 : 1);
  connect(looks, &widgets::TYSegmentedControl::activated, m_library,
          [this](int index) { m_library->setShowsGrid(index == 0); });
  libraryTitle->addControl(looks);

  m_timeline = new timeline::TimelinePanel;
  m_timeline->setHost(*this);
  QDockWidget* timelineDock =
      makeDock(QStringLiteral("timeline"), tr("Timeline"), m_timeline, Qt::BottomDockWidgetArea);
  // The transport is its head.
  timelineDock->setTitleBarWidget(new QWidget);

  m_inspector = new inspector::TYInspectorController;
  QDockWidget* inspectorDock =
      makeDock(QStringLiteral("inspector"), tr("Inspector"), m_inspector, Qt::RightDockWidgetArea);
  m_history = new HistoryPanel;
  QDockWidget* historyDock =
      makeDock(QStringLiteral("history"), tr("History"), m_history, Qt::RightDockWidgetArea);
  new DockTitle(*inspectorDock, QStringLiteral("Inspector"));
  new DockTitle(*historyDock, QStringLiteral("Clock"));
  tabifyDockWidget(inspectorDock, historyDock);
  inspectorDock->raise();

  m_status = new StatusLine;
  m_status->addProgress(new RenderProgress(m_services.renders()));
  connect(m_view, &canvas::CompositionView::actionButtonsChanged, this,
          [this] { setNeedsUpdate(); });
  // What Edit commands are about depends on where the keyboard is.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    if (now && now->window() == this) setNeedsUpdate();
  });
}

void TYWindowController::makeFindings() {
  m_findings = new DocumentFindings(this);
  m_findingsPanel = new FindingsPanel(this);
  connect(m_findings, &DocumentFindings::changed, this, [this] {
    m_status->showFindings(m_findings->groups().size());
    if (m_findingsPanel->isVisible()) m_findingsPanel->setGroups(m_findings->groups());
  });
  connect(m_status, &StatusLine::findingsRequested, this, [this] {
    m_findings->refresh();
    m_findingsPanel->setGroups(m_findings->groups());
    if (!m_findings->groups().isEmpty()) m_findingsPanel->openAbove(m_status->findingsCorner());
  });
  connect(m_findingsPanel, &FindingsPanel::acted, this,
          [this](const DocumentFindings::Group& group) { FindingsMending(*this).act(group); });
}

QDockWidget* TYWindowController::makeDock(const QString& name, const QString& title,
                                          QWidget* content, Qt::DockWidgetArea area) {
  auto* dock = new QDockWidget(title, this);
  dock->setObjectName(name);
  dock->setWidget(content);
  addDockWidget(area, dock);
  return dock;
}

void TYWindowController::makeMenus() {
  // On platforms with one menu bar for all windows this one would hide the others'.
  auto* bar = new QMenuBar;
  bar->setNativeMenuBar(false);
  addWindowMenus(*this, *bar);
  m_toolbar = new MainToolbar(*this);
  auto* top = new QWidget;
  auto* column = new QVBoxLayout(top);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  // The menu bar's place takes any widget; the tools belong right below it.
  column->addWidget(bar);
  column->addWidget(m_toolbar);
  setMenuWidget(top);
  auto* bottom = new QWidget;
  auto* row = new QVBoxLayout(bottom);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(m_status);
  static_cast<QVBoxLayout*>(centralWidget()->layout())->setSpacing(0);
  auto* statusBar = new QStatusBar;
  statusBar->setSizeGripEnabled(false);
  statusBar->setContentsMargins(0, 0, 0, 0);
  statusBar->addPermanentWidget(bottom, 1);
  setStatusBar(statusBar);
}

void TYWindowController::makePanelFocus() {
  m_panelFocus = new PanelFocus(this);
  for (QWidget* panel : {static_cast<QWidget*>(m_toolbar), static_cast<QWidget*>(m_library),
                         static_cast<QWidget*>(m_view), static_cast<QWidget*>(m_timeline),
                         static_cast<QWidget*>(m_inspector), static_cast<QWidget*>(m_history),
                         static_cast<QWidget*>(m_status)})
    m_panelFocus->addPanel(panel);
}

void TYWindowController::saveWindowState() {
  m_layout.save(m_services.defaults());
}

void TYWindowController::takeComposition() {
  model::Composition* composition = m_document.composition();
  m_view->setComposition(composition);
  m_inspector->setComposition(composition);
  m_timeline->setComposition(composition);
  m_history->setContext(&m_document.context());
  m_alignment.setComposition(composition);
  CanvasDefaults(m_services).applyTo(m_document);
  m_view->setGuidesLocked(CanvasDefaults(m_services).guidesLocked());
  m_findings->setComposition(composition);
  m_subscriptions.clear();
  // A guide that is added shows all guides, in every window.
  if (composition)
    m_subscriptions.push_back(
        composition->observe(QStringLiteral("showsRulers"), [this, composition](const auto&) {
          CanvasDefaults(m_services).setShowsRulers(composition->showsRulers());
        }));
  m_subscriptions.push_back(
      m_document.context().observeChanges([this](const store::ChangeSet&) { setNeedsUpdate(); }));
  if (composition)
    for (const char* key : {"selectedComponents", "zoomMode", "playMode"})
      m_subscriptions.push_back(composition->observe(
          QString::fromLatin1(key), [this](const store::Change&) { setNeedsUpdate(); }));
  update();
}

void TYWindowController::setNeedsUpdate() {
  if (std::exchange(m_updateIsDue, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        m_updateIsDue = false;
        update();
      },
      Qt::QueuedConnection);
}

void TYWindowController::update() {
  setWindowTitle(windowTitleForDocumentDisplayName(m_document.displayName()) +
                 QStringLiteral("[*]"));
  setWindowModified(m_document.isDocumentEdited());
  setWindowFilePath(m_document.fileURL().toLocalFile());
  const QUndoStack& history = m_document.context().history();
  const auto name = [](const QString& verb, const QString& what) {
    return what.isEmpty() ? verb : verb + u' ' + what;
  };
  m_actions.action(QStringLiteral("undo"))->setText(name(tr("&Undo"), history.undoText()));
  m_actions.action(QStringLiteral("redo"))->setText(name(tr("&Redo"), history.redoText()));
  const bool plays = composition() && composition()->playMode();
  m_actions.action(QStringLiteral("play"))->setText(plays ? tr("&Stop") : tr("&Play"));
  m_actions.update();
  m_toolbar->setAlignEnabled(m_view->canAlign(), m_view->canDistribute());
  if (composition()) m_toolbar->showZoomMode(composition()->zoomMode());
  m_status->showComposition(composition(), static_cast<double>(m_view->zoomFactor()));
}

QString TYWindowController::windowTitleForDocumentDisplayName(const QString& name) const {
  return composition() ? QStringLiteral("%1 - %2").arg(name, composition()->broadcastMode()) : name;
}

void TYWindowController::mayClose(std::function<void(bool)> answered) {
  m_document.prepareToClose();
  if (!m_document.isDocumentEdited()) {
    answered(true);
    return;
  }
  // The answer is typed into the window that asks.
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
  TYAlert::begin(this,
                 {.title = tr("Save the changes of \"%1\"?").arg(m_document.displayName()),
                  .text = tr("Without saving they are lost."),
                  .kind = TYAlert::Kind::Warning,
                  .list = {},
                  .defaultButton = tr("Save"),
                  .alternateButton = tr("Cancel"),
                  .otherButton = tr("Don't Save"),
                  .preferencesKey = {}},
                 [this, answered](TYAlert::Answer answer) {
                   if (answer == TYAlert::Answer::Default) m_saving->save(answered);
                   if (answer == TYAlert::Answer::Other) answered(true);
                   if (answer == TYAlert::Answer::Alternate) answered(false);
                 });
}

void TYWindowController::closeEvent(QCloseEvent* event) {
  if (m_mayClose) {
    saveWindowState();
    event->accept();
    // The window and its document go when this event is through.
    QMetaObject::invokeMethod(
        qApp,
        [&services = m_services, &document = m_document] { services.closeDocument(document); },
        Qt::QueuedConnection);
    return;
  }
  event->ignore();
  m_services.mayClose(m_document, [this](bool may) {
    if (!may) return;
    m_mayClose = true;
    QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
  });
}

void TYWindowController::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
    m_library->refresh();
    m_findings->refresh();  // files may have come or gone meanwhile
    setNeedsUpdate();
  }
}

void TYWindowController::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  m_layout.takeWidth(event->size().width());
}

bool TYWindowController::event(QEvent* event) {
  // Space plays, but presses buttons that the keyboard is on.
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const QWidget* focus = QApplication::focusWidget();
    if (key->key() == Qt::Key_Space && key->modifiers() == Qt::NoModifier &&
        (qobject_cast<const QAbstractButton*>(focus) || qobject_cast<const QComboBox*>(focus))) {
      event->accept();
      return true;
    }
  }
  return QMainWindow::event(event);
}

bool TYWindowController::editsKeyFrames() const {
  return m_timeline->isVisible() && !m_view->hasFocus() &&
         document::KeyFrameClipboard(m_document).canCopy();
}

void TYWindowController::showReport(const model::CommandReport& report) {
  TYAlert::begin(this,
                 {.title = report.title,
                  .text = report.text,
                  .kind = TYAlert::Kind::Information,
                  .list = {},
                  .defaultButton = QStringLiteral("Ok"),
                  .alternateButton = {},
                  .otherButton = {},
                  .preferencesKey = report.preferenceKey},
                 {}, m_services.defaults());
  setNeedsUpdate();
}

void TYWindowController::showError(const QString& title, const foundation::Error& error) {
  TYAlert::begin(this, {.title = title,
                        .text = error.text(),
                        .kind = TYAlert::Kind::Error,
                        .list = {},
                        .defaultButton = QStringLiteral("Ok"),
                        .alternateButton = {},
                        .otherButton = {},
                        .preferencesKey = {}});
}

void TYWindowController::showWarnings(const QString& title, const QStringList& warnings) {
  TYAlert::begin(this, {.title = title,
                        .text = {},
                        .kind = TYAlert::Kind::Warning,
                        .list = warnings,
                        .defaultButton = QStringLiteral("Ok"),
                        .alternateButton = {},
                        .otherButton = {},
                        .preferencesKey = {}});
}

void TYWindowController::addStandardComponent(const QString& name) {
  if (!composition()) return;
  const auto path = m_document.standardComponents().pathOf(name);
  if (!path) {
    showError(tr("The component could not be added"),
              {QStringLiteral("holds no component %1").arg(name),
               m_document.standardComponents().folder(),
               {}});
    return;
  }
  QStringList warnings;
  composition()->addComponenWithQuartzCompositionFile(*path, {}, warnings);
  if (!warnings.isEmpty()) showWarnings(tr("The component was not added as it is"), warnings);
  m_view->setFocus();
}

void TYWindowController::showHint(const QString& hint) {
  m_status->showHint(hint);
}

void TYWindowController::fillContextMenu(QMenu& menu, const model::Composition& composition) {
  fillCanvasMenu(menu, *this, composition);
}

void TYWindowController::pointerMoved(const std::optional<QPointF>& pixel) {
  m_status->showPointer(pixel);
}

void TYWindowController::fillContextMenu(QMenu& menu, const timeline::TimelineTarget& target) {
  m_actions.update();
  const auto add = [&](const QStringList& identifiers) {
    menu.addSeparator();
    for (const QString& identifier : identifiers) menu.addAction(m_actions.action(identifier));
  };
  // On a stop frame these would be about components that are selected elsewhere.
  if (target.stopFrame) return;
  if (target.component && (!target.attribute || editsKeyFrames()))
    add({QStringLiteral("cut"), QStringLiteral("copy"), QStringLiteral("paste"),
         QStringLiteral("delete")});
  else
    add({QStringLiteral("paste")});
  if (target.component && !target.attribute)
    add({QStringLiteral("duplicate"), QStringLiteral("bringToFront"), QStringLiteral("sendForward"),
         QStringLiteral("sendBackward"), QStringLiteral("sendToBack")});
}

bool TYWindowController::importPSDFile(const QString& path, const QString& qtzFile) {
  // Origins then count as those of components do: from the lower left corner.
  auto importer = document::PSDLayerImporter::layerImporterWithPath(path, false);
  if (!importer || !composition()) {
    foundation::logError(QStringLiteral("Unable to create PSD Importer"));
    return false;
  }
  if ((*importer)->layers().empty()) {
    showWarnings(tr("\"%1\" could not be imported").arg((*importer)->filename()),
                 (*importer)->warnings());
    return false;
  }
  auto* sheet = new PSDImportSheet(this, *composition(), std::move(*importer), qtzFile);
  connect(sheet, &PSDImportSheet::imported, this, [this](const QStringList& warnings) {
    if (!warnings.isEmpty()) showWarnings(tr("Not everything was imported"), warnings);
  });
  sheet->present();
  return true;
}

}  // namespace app
