#include "app/AppDelegate.h"

#include <QApplication>
#include <QFileInfo>
#include <QImageReader>
#include <QLocale>
#include <QStandardPaths>
#include <algorithm>
#include <chrono>

#include "app/AboutSheet.h"
#include "app/HelpWindow.h"
#include "app/PackageDialog.h"
#include "app/TYPreferencesController.h"
#include "app/TYWindowController.h"
#include "app/WindowMenus.h"
#include "canvas/ComponentDrop.h"
#include "canvas/CompositionView.h"
#include "document/ApplicationDefaults.h"
#include "document/PackageLayout.h"
#include "preview/TYPreviewController.h"
#include "widgets/TYAlert.h"
#include "widgets/TYStyleKit.h"

namespace app {

using document::CompositionDocument;
using document::CompositionDocumentsController;
using preview::TYPreviewController;
using widgets::TYAlert;

namespace {

constexpr std::chrono::minutes autosaveInterval(2);

bool isComposition(const QString& path) {
  return QFileInfo(path).suffix().compare(QLatin1String("qtz"), Qt::CaseInsensitive) == 0;
}

/// A composition file or a picture, unless it is a part of a document.
bool becomesComponent(const QString& path) {
  if (!QFileInfo(path).isFile() || document::PackageLayout::around(path)) return false;
  return isComposition(path) || canvas::ComponentDrop::isPSDFile(path) ||
         !QImageReader::imageFormat(path).isEmpty();
}

/// A picture that is cut off; nothing for other files.
std::optional<foundation::Error> whyUnreadable(const QString& path) {
  // Any bytes look like a picture to some reader.
  if (isComposition(path) || QImageReader::imageFormat(path).isEmpty()) return {};
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  if (!reader.read().isNull()) return {};
  return foundation::Error{reader.errorString(), path, {}};
}

void bringToFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace

AppDelegate::AppDelegate(foundation::UserDefaults& userDefaults,
                         document::RecoveryStore recoveryStore)
    : m_defaults(userDefaults),
      m_recent(userDefaults),
      m_controller(userDefaults, model::StandardComponents::located(), std::move(recoveryStore)) {
  document::registerApplicationDefaults(m_defaults);
  using Appearance = widgets::TYStyleKit::Appearance;
  widgets::TYStyleKit::shared().setAppearance(
      static_cast<Appearance>(m_defaults.value(QStringLiteral("appearance")).toInt()));
  widgets::TYStyleKit::shared().setContrast(static_cast<widgets::TYStyleKit::Contrast>(
      m_defaults.value(QStringLiteral("contrast")).toInt()));
  m_controller.setHooks(
      {.showWindows = [this](CompositionDocument& document) { showDocument(document); },
       .willClose = TYPreviewController::documentWillClose,
       .runSlideshow = TYPreviewController::runSlideshowForCompositions,
       .warn =
           [this](const QString& sentence) {
             if (TYWindowController* window = anyWindow())
               window->showWarnings(tr("Changes are not safe"), {sentence});
           }});
  connect(&m_renders, &RenderQueue::failed, this, [this](const foundation::Error& error) {
    windowForMessages().showError(tr("The graphic could not be rendered"), error);
  });
  connect(&m_renders, &RenderQueue::changed, this, [this] {
    const auto* player = TYPreviewController::shared();
    m_renders.setGivesWay(player && player->pump() &&
                          player->statusRow().light() == preview::StatusLamp::Light::Playing);
  });
  m_autosave.setInterval(autosaveInterval);
  connect(&m_autosave, &QTimer::timeout, this, [this] { m_controller.autosave(); });
  m_autosave.start();
  QApplication::setQuitOnLastWindowClosed(true);
}

AppDelegate::~AppDelegate() {
  TYPreviewController::closeShared();
  qDeleteAll(m_windows);
}

void AppDelegate::start(const QStringList& paths) {
  const QList<document::RecoveryEntry> left = m_controller.recoverable();
  openDocuments(paths);
  if (m_controller.documents().isEmpty()) m_controller.newDocument();
  if (!left.isEmpty()) offerRecovery(left);
}

void AppDelegate::openDocuments(const QStringList& paths) {
  std::vector<foundation::Error> problems;
  QStringList components;
  for (const QString& path : paths) {
    std::optional<foundation::Error> problem;
    if (!becomesComponent(path))
      problem = openOrAsk(path);
    else if (problem = whyUnreadable(path); !problem)
      components.append(path);
    if (problem) problems.push_back(*problem);
  }
  if (!components.isEmpty()) addToNewDocument(components);
  tellNotOpened(problems);
  if (paths.isEmpty() && anyWindow()) bringToFront(*anyWindow());
}

void AppDelegate::tellNotOpened(const std::vector<foundation::Error>& problems) {
  if (problems.empty()) return;
  if (problems.size() == 1) {
    windowForMessages().showError(tr("The document could not be opened"), problems.front());
    return;
  }
  QStringList rows;
  for (const foundation::Error& problem : problems) rows.append(problem.text());
  windowForMessages().showWarnings(tr("%1 documents could not be opened").arg(problems.size()),
                                   rows);
}

TYWindowController* AppDelegate::windowOf(const CompositionDocument& document) const {
  return m_windows.value(&document);
}

TYWindowController* AppDelegate::anyWindow() const {
  if (auto* active = qobject_cast<TYWindowController*>(QApplication::activeWindow())) return active;
  return m_windows.isEmpty() ? nullptr : *m_windows.begin();
}

TYWindowController& AppDelegate::windowForMessages() {
  if (!anyWindow()) m_controller.newDocument();
  return *anyWindow();
}

void AppDelegate::chooseDocuments() {
  auto* dialog = new PackageDialog(anyWindow(), PackageDialog::Purpose::Open, tr("Open"),
                                   m_defaults.value(QStringLiteral("documentsFolder")).toString());
  connect(dialog, &PackageDialog::pathChosen, this,
          [this](const QString& path) { openDocument(path); });
  dialog->open();
}

std::optional<foundation::Error> AppDelegate::openOrAsk(const QString& path) {
  const auto opened = m_controller.openDocument(path);
  if (opened) {
    tellOpened(**opened, {});
    return {};
  }
  if (!opened.error().isTaken) return opened.error();
  askAboutTaken(path, opened.error().message);
  return {};
}

void AppDelegate::addToNewDocument(const QStringList& paths) {
  const QList<CompositionDocument*> documents = m_controller.documents();
  const auto untouched =
      std::find_if(documents.begin(), documents.end(),
                   [this](const CompositionDocument* document) { return isUntouched(*document); });
  CompositionDocument& document =
      untouched == documents.end() ? m_controller.newDocument() : **untouched;
  TYWindowController* window = windowOf(document);
  if (!window) return;
  bringToFront(*window);
  // What is wrong with a composition file is told there.
  static_cast<void>(window->view().addComponentsFromPaths(paths, false));
}

bool AppDelegate::isUntouched(const CompositionDocument& document) const {
  return document.fileURL().isEmpty() && !document.isDocumentEdited() &&
         !document.context().canRedo() && windowOf(document);
}

void AppDelegate::tellOpened(const CompositionDocument& document, const QStringList& warnings) {
  if (!document.fileURL().isEmpty()) m_recent.add(document.fileURL().toLocalFile());
  TYWindowController* window = windowOf(document);
  QStringList all = document.warnings() + warnings;
  if (!document.composition())
    all.prepend(tr("The document holds no composition, or several; nothing can be shown."));
  if (window && !all.isEmpty())
    window->showWarnings(tr("\"%1\" was opened, but").arg(document.displayName()), all);
  // An untouched empty document makes room, as people expect.
  for (CompositionDocument* other : m_controller.documents())
    if (other != &document && isUntouched(*other)) windowOf(*other)->close();
}

void AppDelegate::askAboutTaken(const QString& path, const QString& sentence) {
  TYAlert::begin(&windowForMessages(),
                 {.title = tr("The document is in use"),
                  .text = sentence,
                  .kind = TYAlert::Kind::Warning,
                  .list = {},
                  .defaultButton = tr("Open to Look"),
                  .alternateButton = tr("Cancel"),
                  .otherButton = tr("Take Over"),
                  .preferencesKey = {}},
                 [this, path](TYAlert::Answer answer) {
                   using WhenTaken = CompositionDocumentsController::WhenTaken;
                   if (answer == TYAlert::Answer::Alternate) return;
                   const auto opened = m_controller.openDocument(
                       path,
                       answer == TYAlert::Answer::Other ? WhenTaken::TakeOver : WhenTaken::LookAt);
                   if (opened)
                     tellOpened(**opened, {});
                   else
                     tellNotOpened({opened.error()});
                 });
}

void AppDelegate::documentWasSaved(const CompositionDocument& document) {
  m_recent.add(document.fileURL().toLocalFile());
}

void AppDelegate::closeDocument(CompositionDocument& document) {
  if (TYWindowController* window = m_windows.take(&document)) delete window;
  m_controller.closeDocument(document);
}

void AppDelegate::showDocument(CompositionDocument& document) {
  TYWindowController*& window = m_windows[&document];
  if (!window) window = new TYWindowController(document, *this);
  bringToFront(*window);
}

void AppDelegate::showPreferences() {
  if (!m_preferences) {
    ProgramServices& services = *this;
    m_preferences = std::make_unique<TYPreferencesController>(services);
    connect(m_preferences.get(), &TYPreferencesController::defaultFormatChanged, this, [this] {
      for (TYWindowController* window : std::as_const(m_windows)) registerNewDocumentMenu(*window);
    });
  }
  m_preferences->show();
  m_preferences->raise();
}

void AppDelegate::showAbout() {
  auto* sheet = new AboutSheet(&windowForMessages());
  sheet->present();
}

void AppDelegate::showHelp() {
  if (!m_help) {
    const QString resources = QFileInfo(model::StandardComponents::located().folder()).path();
    m_help = std::make_unique<HelpWindow>(resources + QStringLiteral("/help"));
  }
  m_help->show();
  m_help->raise();
  m_help->activateWindow();
}

void AppDelegate::mayEndRendering(QWidget& window, const std::function<void(bool)>& answered) {
  const render::RenderTask* task = m_renders.current();
  if (!task) {
    answered(true);
    return;
  }
  const QString name = QFileInfo(RenderQueue::pathOf(task->settings())).fileName();
  TYAlert::begin(
      &window,
      {.title = tr("\"%1\" is still being rendered").arg(name),
       .text = m_renders.waiting() > 0 ? tr("Quitting gives it up, and what waits behind it.")
                                       : tr("Quitting gives it up."),
       .kind = TYAlert::Kind::Warning,
       .list = {},
       .defaultButton = tr("Go On Rendering"),
       .alternateButton = {},
       .otherButton = tr("Stop and Quit"),
       .preferencesKey = {}},
      [this, answered](TYAlert::Answer answer) {
        const bool stops = answer == TYAlert::Answer::Other;
        if (stops) m_renders.cancelAll();
        answered(stops);
      });
}

void AppDelegate::mayClose(CompositionDocument& document, std::function<void(bool)> answered) {
  TYWindowController* window = windowOf(document);
  window->mayClose([this, window, answered](bool may) {
    // The program ends with its last window.
    if (may && m_windows.size() == 1)
      mayEndRendering(*window, answered);
    else
      answered(may);
  });
}

void AppDelegate::quit() {
  if (m_renders.isBusy() && anyWindow()) {
    mayEndRendering(*anyWindow(), [this](bool may) {
      if (may) endDocuments();
    });
    return;
  }
  endDocuments();
}

void AppDelegate::endDocuments() {
  const QList<CompositionDocument*> unsaved = m_controller.unsavedDocuments();
  if (unsaved.isEmpty()) {
    for (CompositionDocument* document : m_controller.documents())
      if (TYWindowController* window = windowOf(*document)) window->close();
    return;
  }
  TYWindowController* window = windowOf(*unsaved.first());
  if (!window) return;
  window->mayClose([this, &document = *unsaved.first()](bool may) {
    if (!may) return;
    // Asked once; the next unsaved one follows.
    QMetaObject::invokeMethod(
        this,
        [this, &document] {
          if (TYWindowController* asked = windowOf(document)) asked->saveWindowState();
          closeDocument(document);
          if (m_controller.documents().isEmpty())
            QApplication::quit();
          else
            endDocuments();
        },
        Qt::QueuedConnection);
  });
}

void AppDelegate::offerRecovery(const QList<document::RecoveryEntry>& entries) {
  QStringList names;
  for (const document::RecoveryEntry& entry : entries)
    names.append(tr("%1, changed %2")
                     .arg(entry.document.displayName,
                          QLocale().toString(entry.lastChange, QLocale::ShortFormat)));
  TYAlert::begin(anyWindow(),
                 {.title = tr("Some changes were not saved"),
                  .text = tr("The program ended before these documents were saved."),
                  .kind = TYAlert::Kind::Warning,
                  .list = names,
                  .defaultButton = tr("Recover"),
                  .alternateButton = tr("Later"),
                  .otherButton = tr("Discard"),
                  .preferencesKey = {}},
                 [this, entries](TYAlert::Answer answer) {
                   for (const document::RecoveryEntry& entry : entries) {
                     if (answer == TYAlert::Answer::Other)
                       static_cast<void>(m_controller.discard(entry));
                     if (answer != TYAlert::Answer::Default) continue;
                     QStringList warnings;
                     const auto recovered = m_controller.recoverDocument(entry, warnings);
                     if (recovered)
                       tellOpened(**recovered, warnings);
                     else if (TYWindowController* window = anyWindow())
                       window->showError(tr("A document could not be recovered"),
                                         recovered.error());
                   }
                 });
}

}  // namespace app
