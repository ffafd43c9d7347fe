#include "preview/TYPreviewController.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include "foundation/UserDefaults.h"
#include "preview/DisplayName.h"
#include "preview/FieldsPanel.h"
#include "preview/FullScreen.h"
#include "preview/PictureChecks.h"
#include "preview/PreviewView.h"
#include "preview/RestingPointer.h"
#include "preview/fields/FieldsOpening.h"
#include "widgets/TYStyleKit.h"

namespace preview {

using document::CompositionDocument;
using Light = StatusLamp::Light;

namespace {

const QString followKey = QStringLiteral("previewFollowsEdits");
const QString triggerKey = QStringLiteral("trigger");
constexpr std::chrono::milliseconds triggerTime(100);
constexpr std::chrono::milliseconds meterInterval(500);
/// How long a slideshow stays with something that does not play.
constexpr std::chrono::milliseconds slideTime(2000);
/// Of a window's frame, while the window manager has not told.
constexpr QMargins usualFrame(2, 32, 2, 2);

QPointer<TYPreviewController>& instance() {
  static QPointer<TYPreviewController> shared;
  return shared;
}

}  // namespace

TYPreviewController* TYPreviewController::shared() {
  return instance();
}

TYPreviewController& TYPreviewController::made() {
  if (!instance()) instance() = new TYPreviewController;
  return *instance();
}

void TYPreviewController::togglePreviewForCompositionDocument(CompositionDocument& document) {
  made().m_slideshowCompositions.clear();
  made().displayCompositionDocument(document);
  shared()->comeToFront();
}

void TYPreviewController::runSlideshowForCompositions(
    const QList<CompositionDocument*>& documents) {
  made().displayCompositions(documents);
  shared()->comeToFront();
}

void TYPreviewController::documentWillClose(const CompositionDocument& document) {
  if (shared()) shared()->forget(document);
}

void TYPreviewController::closeShared() {
  if (shared()) shared()->close();
}

TYPreviewController::TYPreviewController()
    : QWidget(nullptr, Qt::Window | Qt::WindowStaysOnTopHint),
      m_view(new PreviewView),
      m_status(new StatusRow),
      m_checks(std::make_unique<PictureChecks>(
          *m_view, *m_status, [this](auto background) { return provideBackground(background); })),
      m_document(new PreviewedDocument(this)),
      m_background(m_checks->background()),
      m_fields(new FieldsPanel(this)),
      m_fieldsOpening(new FieldsOpening(*this, *m_fields)),
      m_fullScreen(new FullScreen(*this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_QuitOnClose, false);
  setFocusPolicy(Qt::StrongFocus);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  auto* column = new QVBoxLayout;
  column->setSpacing(0);
  row->addLayout(column, 1);
  row->addWidget(m_fields);
  column->addWidget(m_view, 1);
  column->addWidget(m_status);
  m_nextTimer.setSingleShot(true);
  m_meterTimer.setInterval(meterInterval);
  updateTitle();
  observe();
  setFollows(foundation::UserDefaults::standard().value(followKey).toBool());
}

TYPreviewController::~TYPreviewController() = default;

void TYPreviewController::observe() {
  connect(m_status, &StatusRow::reloadRequested, this, &TYPreviewController::reloadComposition);
  connect(m_status, &StatusRow::triggerRequested, this, &TYPreviewController::sendTrigger);
  connect(m_status, &StatusRow::againRequested, this, &TYPreviewController::previewAgain);
  connect(m_status, &StatusRow::followToggled, this, &TYPreviewController::toggleFollowing);
  connect(m_document, &PreviewedDocument::outdatedChanged, this,
          [this](bool outdated) { m_status->setOffersAgain(outdated && !follows()); });
  connect(m_document, &PreviewedDocument::showRequested, this, &TYPreviewController::catchUp);
  connect(&m_nextTimer, &QTimer::timeout, this, &TYPreviewController::showNextComposition);
  connect(&m_meterTimer, &QTimer::timeout, this, &TYPreviewController::updateMeter);
  connect(&m_triggerKey, &HeldKey::released, this, [this] {
    if (std::exchange(m_keyHoldsTrigger, false)) releaseTrigger();
  });
  observeFields();
  observeFullScreen();
}

void TYPreviewController::observeFullScreen() {
  auto* pointer = new RestingPointer(*m_view);
  connect(m_fullScreen, &FullScreen::changed, this, [this, pointer](bool isOn) {
    m_status->setVisible(!isOn);
    m_fieldsOpening->setSuspended(isOn);
    pointer->setHides(isOn);
  });
  connect(m_fullScreen, &FullScreen::screenIsGone, this,
          [this] { m_status->setNotice(tr("The screen of the full picture is gone")); });
}

bool TYPreviewController::isShowingFullscreen() const {
  return m_fullScreen->isOn();
}

void TYPreviewController::observeFields() {
  m_status->setFieldsShown(m_fieldsOpening->isOpen());
  connect(m_status, &StatusRow::fieldsRequested, m_fieldsOpening, &FieldsOpening::setOpen);
  connect(m_fieldsOpening, &FieldsOpening::changed, m_status, &StatusRow::setFieldsShown);
  connect(m_fields, &FieldsPanel::playRequested, this, &TYPreviewController::reloadComposition);
  connect(m_fields, &FieldsPanel::triggerRequested, this, &TYPreviewController::sendTrigger);
}

void TYPreviewController::displayCompositionDocument(CompositionDocument& document) {
  unload();
  m_document->show(document);
  m_name = document.displayName();
  auto program = PreviewProgram::fromDocument(document, m_background);
  if (program)
    load(std::move(*program));
  else
    showFailure(program.error());
  updateTitle();
  show();
}

void TYPreviewController::comeToFront() {
  raise();
  activateWindow();
}

void TYPreviewController::unload() {
  m_fields->setPump(nullptr);
  m_pump.reset();
  ++m_load;
  m_nextTimer.stop();
  m_meterTimer.stop();
  m_state = {};
  m_failure.clear();
  m_keyHoldsTrigger = false;
  m_status->setTriggerVisible(false);
  m_status->setNotice({});
}

template <typename Act>
auto TYPreviewController::forward(Act act) {
  return [this, act, load = m_load](auto... values) {
    const auto actNow = [this, act, load, values...] {
      if (load == m_load) act(values...);
    };
    QMetaObject::invokeMethod(this, actNow, Qt::QueuedConnection);
  };
}

void TYPreviewController::load(PreviewProgram program) {
  const QSize size = program.size;
  m_view->setFailure({}, {});
  m_view->setPictureSize(size);
  m_checks->beginGraphic(m_name, program.isInterlaced);
  m_servesBoth = !program.hasOwnBackground;
  m_run = 1;
  m_fields->takeProgram(program, m_document->document());
  m_pump = std::make_unique<FramePump>(
      std::move(program),
      FramePump::Hooks{.pictureReady = forward([this] { takePicture(); }),
                       .stateChanged = forward([this](const auto& state) { takeState(state); }),
                       .outputsReady = forward([this] { m_fields->outputsAreReady(); }),
                       .found = forward([this](const auto& list) { tellFindings(list); }),
                       .stalled = forward([this](int run) { tellStalled(run); })});
  m_fields->setPump(m_pump.get());
  fitWindow(size);
  updateStatusField();
  updateMeter();
  m_meterTimer.start();
}

bool TYPreviewController::provideBackground(PreviewProgram::Background background) {
  if (background == m_background) return true;
  const bool needsExport = m_pump && !m_servesBoth;
  if (needsExport && !m_document->document()) {
    m_status->setNotice(tr("The document was closed: its background stays as it is"));
    return false;
  }
  const auto before = std::exchange(m_background, background);
  if (!needsExport || catchUp()) return true;
  m_background = before;
  return false;
}

void TYPreviewController::showFailure(const PreviewProgram::Failure& failure) {
  const bool isExport = failure.stage == PreviewProgram::Failure::Stage::Export;
  m_failure = isExport ? tr("\"%1\" could not be exported").arg(m_name)
                       : tr("The export of \"%1\" could not be loaded").arg(m_name);
  m_view->setPictureSize({1920, 1080});
  m_view->setFailure(m_failure, failure.error.text());
  m_fields->showNothing();
  if (!isVisible()) fitWindow({1280, 720});
  updateStatusField();
  updateMeter();
  goToNextSoon();
}

void TYPreviewController::takePicture() {
  if (auto picture = m_pump->takePicture()) m_view->setPicture(std::move(picture));
}

void TYPreviewController::takeState(const FramePump::State& state) {
  if (state.run != m_run) return;
  const bool isFirst = m_state.run != state.run;
  const bool ended = m_state.isActive && !state.isActive;
  m_state = state;
  m_status->setTriggerVisible(state.isWaiting);
  m_fields->setWaiting(state.isWaiting);
  updateStatusField();
  if (ended && runsSlideshow())
    showNextComposition();
  else if (isFirst && !state.isActive)
    goToNextSoon();
}

void TYPreviewController::tellFindings(const QStringList& findings) {
  const QString last = findings.last();
  m_status->setNotice(
      findings.size() == 1 ? last : tr("%1 (%2 more)").arg(last).arg(findings.size() - 1),
      findings.join(u'\n'));
}

void TYPreviewController::tellStalled(int run) {
  if (run != m_run) return;
  m_state = {};
  m_state.run = run;
  m_status->setTriggerVisible(false);
  m_failure = tr("\"%1\" takes too long").arg(m_name);
  m_view->setFailure(
      m_failure,
      tr("A frame took longer than %1 seconds and playing was ended. A component may have a script "
         "that never ends. Reload tries again.")
          .arg(std::chrono::duration_cast<std::chrono::seconds>(FramePump::mostTimeOfFrame)
                   .count()));
  updateStatusField();
  goToNextSoon();
}

void TYPreviewController::updateStatusField() {
  if (!m_failure.isEmpty())
    m_status->setStatus(Light::Failed, m_failure);
  else if (m_status->isTriggerVisible())
    m_status->setStatus(Light::Waiting, tr("Waiting for Trigger"));
  else if (m_state.isActive || (m_pump && m_state.run != m_run))
    // What was loaded is taken to play until its first frame tells.
    m_status->setStatus(Light::Playing, tr("Playing %1").arg(m_name));
  else
    m_status->setStatus(Light::Finished, tr("Playout finished"));
}

void TYPreviewController::updateTitle() {
  setWindowTitle(m_name.isEmpty() ? tr("Preview") : tr("Preview – %1").arg(m_name));
}

void TYPreviewController::updateMeter() {
  const bool isWanted =
      foundation::UserDefaults::standard().value(QStringLiteral("previewFPS")).toBool();
  m_status->setMeterVisible(isWanted && m_pump);
  if (isWanted && m_pump) m_status->showReading(m_pump->reading());
}

void TYPreviewController::fitWindow(const QSize& picture) {
  if (isShowingFullscreen()) return;
  const QRect area = screen()->availableGeometry();
  const bool hasFrame = isVisible() && frameGeometry() != geometry();
  const QSize room =
      hasFrame ? area.size() - (frameGeometry().size() - size()) : (area - usualFrame).size();
  const double scale = std::min(
      {1.0, static_cast<double>(room.width() - m_fieldsOpening->takenWidth()) / picture.width(),
       static_cast<double>(room.height() - StatusRow::rowHeight) / picture.height()});
  const QSize content = (QSizeF(picture) * std::max(scale, 0.05)).toSize();
  setWindowState(windowState() & ~Qt::WindowMaximized);
  resize(content + QSize(m_fieldsOpening->takenWidth(), StatusRow::rowHeight));
}

void TYPreviewController::displayCompositions(const QList<CompositionDocument*>& documents) {
  m_slideshowCompositions = documents;
  m_slideshowIndex = 0;
  if (!documents.isEmpty()) displayCompositionDocument(*documents.first());
}

void TYPreviewController::showNextComposition() {
  if (!runsSlideshow()) return;
  if (++m_slideshowIndex >= m_slideshowCompositions.size()) m_slideshowIndex = 0;
  displayCompositionDocument(*m_slideshowCompositions.at(m_slideshowIndex));
}

/// What cannot play says never that it ended.
void TYPreviewController::goToNextSoon() {
  if (runsSlideshow()) m_nextTimer.start(slideTime);
}

void TYPreviewController::previewAgain() {
  if (CompositionDocument* document = m_document->document()) displayCompositionDocument(*document);
}

void TYPreviewController::setFollows(bool follows) {
  m_document->setFollows(follows);
  m_status->setFollows(follows);
  m_status->setOffersAgain(m_document->isOutdated() && !follows);
}

void TYPreviewController::toggleFollowing() {
  setFollows(!follows());
  foundation::UserDefaults::standard().setValue(follows(), followKey);
}

bool TYPreviewController::catchUp() {
  CompositionDocument* document = m_document->document();
  if (!document) return false;
  if (!m_pump || !m_failure.isEmpty()) {
    displayCompositionDocument(*document);
    return true;
  }
  const auto begin = FrameClock::Clock::now();
  auto program = PreviewProgram::fromDocument(*document, m_background);
  if (program && !m_pump->canGoOnWith(*program)) {
    displayCompositionDocument(*document);
    return true;
  }
  if (program) {
    m_document->noteShown(
        std::chrono::duration_cast<std::chrono::milliseconds>(FrameClock::Clock::now() - begin));
    m_servesBoth = !program->hasOwnBackground;
    m_fields->takeProgram(*program, document);
    m_pump->exchangeProgram(std::move(*program));
  }
  m_status->setNotice(program ? QString()
                              : tr("The edit is not shown: %1").arg(program.error().error.text()));
  return program.has_value();
}

void TYPreviewController::forget(const CompositionDocument& document) {
  const qsizetype index = m_slideshowCompositions.indexOf(&document);
  if (index >= 0) {
    m_slideshowCompositions.removeAt(index);
    // The one that took its place is the next.
    if (index <= m_slideshowIndex) --m_slideshowIndex;
  }
  m_fields->documentWillClose(document);
  if (m_document->document() != &document) return;
  m_document->letGo();
  m_status->setNotice(tr("The document was closed"));
}

bool TYPreviewController::setTrigger() {
  if (!m_pump || !isWaitingForTrigger()) return false;
  m_pump->setInput(triggerKey, true);
  return true;
}

void TYPreviewController::releaseTrigger() {
  if (m_pump) m_pump->setInput(triggerKey, false);
}

void TYPreviewController::sendTrigger() {
  if (setTrigger()) QTimer::singleShot(triggerTime, this, &TYPreviewController::releaseTrigger);
}

void TYPreviewController::reloadComposition() {
  if (!m_pump) {
    // There may be something to play by now.
    previewAgain();
    return;
  }
  m_run = m_pump->restart();
  m_checks->beginAnew();
  m_state = {};
  m_failure.clear();
  m_nextTimer.stop();
  m_view->setFailure({}, {});
  m_status->setTriggerVisible(false);
  // What was found is found again where it still holds.
  m_status->setNotice(m_document->document() ? QString() : tr("The document was closed"));
  m_fields->setWaiting(false);
  updateStatusField();
}

void TYPreviewController::togglePreviewFullscreen() {
  TYPreviewController* controller = shared();
  if (!controller) return;
  if (controller->isShowingFullscreen())
    controller->m_fullScreen->leave();
  else if (QScreen* first = QGuiApplication::primaryScreen())
    controller->m_fullScreen->enter(*first);
}

void TYPreviewController::showFullscreenOnScreen(const QString& name) {
  TYPreviewController* controller = shared();
  QScreen* screen = DisplayName::screenWithName(name);
  if (controller && screen) controller->m_fullScreen->enter(*screen);
}

void TYPreviewController::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space) {
    if (m_triggerKey.press(*event)) m_keyHoldsTrigger = setTrigger();
    return;
  }
  if (event->isAutoRepeat() || m_fieldsOpening->takeKey(*event)) return;
  if (event->key() == Qt::Key_R && event->modifiers() == Qt::NoModifier)
    reloadComposition();
  else if (event->key() == Qt::Key_R && event->modifiers() == Qt::ShiftModifier)
    previewAgain();
  else if (m_checks->takeKey(*event))
    return;
  else if (event->key() == Qt::Key_L && event->modifiers() == Qt::NoModifier)
    toggleFollowing();
  else if (event->key() == Qt::Key_F11)
    togglePreviewFullscreen();
  else if (event->key() == Qt::Key_Escape && isShowingFullscreen())
    m_fullScreen->leave();
  else if (event->matches(QKeySequence::Close))
    close();
  else
    QWidget::keyPressEvent(event);
}

void TYPreviewController::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space) return QWidget::keyReleaseEvent(event);
  m_triggerKey.release(*event);
}

void TYPreviewController::changeEvent(QEvent* event) {
  // A key that goes up in another window is not told here.
  if (event->type() == QEvent::ActivationChange && !isActiveWindow()) m_triggerKey.letGo();
  QWidget::changeEvent(event);
}

void TYPreviewController::closeEvent(QCloseEvent* event) {
  m_slideshowCompositions.clear();
  unload();
  m_document->letGo();
  instance().clear();
  event->accept();
}

}  // namespace preview
