// Makes the pictures of the user's guide with the editor itself:
//   guide_pictures FOLDER-OF-EXAMPLES BACKGROUND.jpg OUTPUT-FOLDER
#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QLineEdit>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <cstdio>

#include "app/AppDelegate.h"
#include "app/FindingsPanel.h"
#include "app/TYPreferencesController.h"
#include "app/TYWindowController.h"
#include "canvas/CompositionView.h"
#include "inspector/TYInspectorController.h"
#include "model/Composition.h"
#include "preview/FieldsPanel.h"
#include "preview/TYPreviewController.h"
#include "timeline/TYTimelineView.h"
#include "widgets/TYSheet.h"
#include "widgets/TYStyleKit.h"

namespace {

constexpr QSize windowSize(1600, 960);
constexpr QSize playerSize(1280, 752);
constexpr int patience = 1500;  ///< milliseconds that thumbnails may take

/// The editor, told what to show.
class Studio {
 public:
  explicit Studio(const QString& outputFolder)
      : m_output(outputFolder), m_defaults(m_folder.filePath(QStringLiteral("settings.conf"))) {
    m_defaults.setValue(static_cast<int>(widgets::TYStyleKit::Appearance::Dark),
                        QStringLiteral("appearance"));
    const QString pictures = m_folder.filePath(QStringLiteral("Pictures"));
    QDir().mkpath(pictures);
    for (const char* key :
         {"imagesLibraryPath", "componentsLibraryPath", "compositionsLibraryPath"})
      m_defaults.setValue(pictures, QString::fromLatin1(key));
    m_defaults.setValue(QVariantMap(), QStringLiteral("windowState"));
    m_delegate = std::make_unique<app::AppDelegate>(
        m_defaults, document::RecoveryStore(m_folder.filePath(QStringLiteral("state"))));
  }

  app::TYWindowController& open(const QString& document) {
    m_delegate->openDocuments({document});
    return prepare();
  }

  static QImage pictureOf(QWidget& widget) {
    QTest::qWait(patience);
    return widget.grab().toImage();
  }
  void save(QWidget& widget, const char* name) const { save(pictureOf(widget), name); }
  void save(const QImage& picture, const char* name) const {
    const QString path = QDir(m_output).filePath(QString::fromLatin1(name));
    if (!picture.save(path, nullptr, 90)) qFatal("cannot write %s", qPrintable(path));
    std::printf("%s\n", qPrintable(path));
  }

 private:
  app::TYWindowController& prepare() {
    app::TYWindowController& window =
        *m_delegate->windowOf(*m_delegate->controller().documents().last());
    window.setWindowState(Qt::WindowNoState);
    window.resize(windowSize);
    window.resizeDocks({window.findChild<QDockWidget*>(QStringLiteral("timeline"))}, {280},
                       Qt::Vertical);
    window.resizeDocks({window.findChild<QDockWidget*>(QStringLiteral("library"))}, {452},
                       Qt::Horizontal);
    return window;
  }

  QTemporaryDir m_folder;
  QString m_output;
  foundation::UserDefaults m_defaults;
  std::unique_ptr<app::AppDelegate> m_delegate;
};

model::QuartzComponent* componentNamed(const model::Composition& composition,
                                       const QString& title) {
  for (model::QuartzComponent* component : composition.components())
    if (component->title() == title) return component;
  return nullptr;
}

/// The picture that README shows.
void showEditor(app::TYWindowController& window, const QImage& background) {
  model::Composition& composition = *window.composition();
  composition.setBackgroundImage(background);
  composition.setBackgroundMode(model::BackgroundMode::Image);
  composition.addRulerAtPosition(148, true);
  composition.setShowsRulers(true);
  composition.setShowsSafeZones(true);
  composition.setEditorTimepoint(0.8);
  if (auto* name = componentNamed(composition, QStringLiteral("Name 1"))) name->setSelected(true);
  QTest::qWait(patience);  // until the window has its size
  window.findChild<timeline::TYTimelineView*>()->zoomToFit();
}

/// Key frames, and stop frames above them.
void showKeyFrames(app::TYWindowController& window) {
  model::QuartzComponent* richest = nullptr;
  qsizetype most = 0;
  for (model::QuartzComponent* component : window.composition()->components()) {
    qsizetype keyFrames = 0;
    for (const model::Attribute* attribute : component->attributes())
      if (attribute->animateable()) keyFrames += attribute->sortedKeyFrames().size();
    if (keyFrames > most) richest = component;
    most = std::max(most, keyFrames);
  }
  if (!richest) return;
  for (auto* other : window.composition()->selectedComponents()) other->setSelected(false);
  richest->setSelected(true);
  auto* timeline = window.findChild<timeline::TYTimelineView*>();
  timeline->setExpanded(*richest, true, timeline::TYTimelineView::Expanded::One);
  window.resizeDocks({window.findChild<QDockWidget*>(QStringLiteral("timeline"))}, {480},
                     Qt::Vertical);
}

void selectOnly(model::Composition& composition, const QString& title) {
  for (auto* other : composition.selectedComponents()) other->setSelected(false);
  if (auto* component = componentNamed(composition, title)) component->setSelected(true);
}

/// Side by side on white.
QImage inARow(const QList<QImage>& pictures) {
  constexpr int gap = 16;
  QSize size(-gap, 0);
  for (const QImage& picture : pictures)
    size = QSize(size.width() + gap + picture.width(), std::max(size.height(), picture.height()));
  QImage row(size, QImage::Format_RGB32);
  row.fill(Qt::white);
  QPainter painter(&row);
  int x = 0;
  for (const QImage& picture : pictures) {
    painter.drawImage(x, 0, picture);
    x += picture.width() + gap;
  }
  return row;
}

/// The inspector's pages: the diamonds beside values that are animated, what may be changed on air,
/// and the keys that the export will publish.
void showInspector(const Studio& studio, app::TYWindowController& window) {
  using Place = inspector::TYInspectorController::Place;
  auto* inspector = window.findChild<inspector::TYInspectorController*>();
  auto* dock = window.findChild<QDockWidget*>(QStringLiteral("inspector"));
  selectOnly(*window.composition(), QStringLiteral("Name 1"));
  window.composition()->setEditorTimepoint(0.64);
  QList<QImage> pages{Studio::pictureOf(*dock)};
  inspector->showPlace(Place::Permissions);
  pages.append(Studio::pictureOf(*dock));
  inspector->showPlace(Place::Document);
  QTest::qWait(patience);
  // Its end, with the stop frames and the published keys.
  for (auto* page : inspector->findChildren<QScrollArea*>())
    if (page->isVisible())
      page->verticalScrollBar()->setValue(page->verticalScrollBar()->maximum());
  pages.append(Studio::pictureOf(*dock));
  studio.save(inARow(pages), "inspector.jpg");
  inspector->showPlace(Place::Properties);
}

/// The player, held at the first stop frame.
void showPlayer(const Studio& studio, app::TYWindowController& window) {
  using preview::TYPreviewController;
  TYPreviewController::togglePreviewForCompositionDocument(window.document());
  TYPreviewController* player = TYPreviewController::shared();
  player->resize(playerSize);
  if (!QTest::qWaitFor([&] { return player->isWaitingForTrigger(); }, 20 * patience))
    qFatal("the player does not come to the first stop frame");
  studio.save(*player, "player.jpg");
  QTest::keyClick(player, Qt::Key_F, Qt::ControlModifier);
  player->resize(playerSize + QSize(preview::FieldsPanel::panelWidth, 0));
  player->fieldsPanel().model().enterText(QStringLiteral("Name_1_Text"),
                                          QStringLiteral("Ada Lindqvist"));
  player->fieldsPanel().model().enterText(QStringLiteral("Role_1_Text"),
                                          QStringLiteral("Ferry captain, line 4"));
  player->setFocus();  // a cursor that blinks would make another picture each time
  studio.save(*player, "player-fields.jpg");
  TYPreviewController::closeShared();
}

/// What is asked before the graphic is rendered.
void showRendering(const Studio& studio, app::TYWindowController& window) {
  window.actions().action(QStringLiteral("render"))->trigger();
  auto* sheet = window.findChild<widgets::TYSheet*>(QStringLiteral("renderSheet"));
  if (!sheet) qFatal("rendering asks nothing");
  // Not where this machine has its examples.
  auto* path = sheet->findChild<QLineEdit*>(QStringLiteral("path"));
  path->setText(QStringLiteral("/home/ada/Movies/lower-third.mov"));
  sheet->setFocus();
  constexpr QMargins around(100, 0, 100, 60);
  const QWidget& box = *sheet->body()->parentWidget();
  const QRect place(box.mapTo(&window, QPoint()), box.size());
  studio.save(Studio::pictureOf(window).copy(place.marginsAdded(around)), "render.jpg");
  sheet->closeSheet();
}

/// Something that does not come out as meant, for the list of findings.
void spoil(model::Composition& composition) {
  for (model::QuartzComponent* component : composition.components())
    for (model::Attribute* attribute : component->attributes()) {
      const model::AttributeValue value = attribute->currentValue();
      if (const auto* font = value.as<model::FontValue>())
        attribute->setCurrentValue(
            model::FontValue{QStringLiteral("Harbour Sans Bold"), font->size});
    }
  composition.components().list().first()->setEndTime(composition.duration() + 1);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings.path()));
  QApplication application(argc, argv);
  QApplication::setApplicationVersion(QStringLiteral(TESSARY_VERSION));
  if (argc != 4) qFatal("usage: guide_pictures EXAMPLES BACKGROUND OUTPUT");
  widgets::TYStyleKit::install(application);
  const QDir examples(QString::fromLocal8Bit(argv[1]));
  Studio studio(QString::fromLocal8Bit(argv[3]));

  app::TYWindowController& editor =
      studio.open(examples.filePath(QStringLiteral("lower-third.composition")));
  showEditor(editor, QImage(QString::fromLocal8Bit(argv[2])));
  studio.save(editor, "editor.jpg");
  studio.save(*editor.findChild<QDockWidget*>(QStringLiteral("library")), "library.jpg");
  showKeyFrames(editor);
  studio.save(*editor.findChild<QDockWidget*>(QStringLiteral("timeline")), "timeline.jpg");

  showInspector(studio, editor);
  showPlayer(studio, editor);
  showRendering(studio, editor);

  spoil(*editor.composition());
  QTest::qWait(patience);
  if (auto* button = editor.findChild<QToolButton*>(QStringLiteral("findings")))
    QTest::mouseClick(button, Qt::LeftButton);
  if (auto* panel = editor.findChild<app::FindingsPanel*>()) {
    studio.save(*panel, "findings.jpg");
    panel->close();
  }

  editor.actions().action(QStringLiteral("preferences"))->trigger();
  for (QWidget* window : QApplication::topLevelWidgets())
    if (auto* preferences = qobject_cast<app::TYPreferencesController*>(window))
      studio.save(*preferences, "preferences.jpg");
  return 0;
}
