#include "preview/PictureChecks.h"

#include <QContextMenuEvent>
#include <QFileInfo>
#include <QMenu>

#include "preview/PreviewView.h"
#include "preview/StatusRow.h"
#include "preview/ViewNavigation.h"
#include "widgets/FileChooser.h"
#include "widgets/TYAlert.h"
#include "widgets/color/ColorPopover.h"

namespace preview {

using Backdrop = PictureOptions::Backdrop;
using Channel = PictureOptions::Channel;
using Kind = BackdropSource::Kind;
using foundation::UserDefaults;

namespace {

constexpr int menuGap = 4;
constexpr double keyDistance = 60;  // logical units that an arrow key moves the picture

/// For as long as the program runs: nobody wants to begin the next day at 200 %.
int& rememberedZoom() {
  static int zoom = PictureGeometry::fit;
  return zoom;
}

/// Likewise: a key that is still shown the next day is taken for the graphic.
Channel& rememberedChannel() {
  static Channel channel = Channel::Picture;
  return channel;
}

bool isFile(Backdrop backdrop) {
  return backdrop == Backdrop::Still || backdrop == Backdrop::Movie;
}

}  // namespace

PictureChecks::PictureChecks(PreviewView& view, StatusRow& row, Provide provide)
    : m_view(view),
      m_row(row),
      m_provide(std::move(provide)),
      m_options(PictureOptions::fromDefaults(UserDefaults::standard())) {
  new ViewNavigation(view);
  view.installEventFilter(this);
  observe();
  view.setZoom(rememberedZoom());
  m_options.channel = rememberedChannel();
  showChannel();
  view.setOptions(m_options);
  if (m_options.backdrop == Backdrop::Still) m_loader.load(Kind::Still, m_options.still);
  if (m_options.backdrop == Backdrop::Movie) m_loader.load(Kind::Movie, m_options.movie);
}

void PictureChecks::observe() {
  connect(&m_view, &PreviewView::scaleChanged, this, &PictureChecks::showScale);
  connect(&m_row, &StatusRow::pictureMenuRequested, this,
          [this](const QWidget* above) { popUp(true, *above); });
  connect(&m_row, &StatusRow::zoomMenuRequested, this,
          [this](const QWidget* above) { popUp(false, *above); });
  connect(&m_row, &StatusRow::wholePictureRequested, this,
          [this] { change([](PictureOptions& options) { options.channel = Channel::Picture; }); });
  connect(&m_loader, &BackdropLoader::replaced, this, &PictureChecks::takeFile);
  connect(&m_loader, &BackdropLoader::pictureReady, &m_view, &PreviewView::setBackdrop);
  connect(&m_loader, &BackdropLoader::failed, this, &PictureChecks::takeFailure);
}

PictureChecks::Background PictureChecks::background() const {
  return m_options.showsOwnBackground() ? Background::Include : Background::Exclude;
}

void PictureChecks::beginGraphic(const QString& name, bool isInterlaced) {
  m_name = name;
  m_isInterlaced = isInterlaced;
  m_loader.beginAnew();
}

bool PictureChecks::setOptions(const PictureOptions& options) {
  const bool showsOwn = options.showsOwnBackground();
  if (showsOwn != m_options.showsOwnBackground() &&
      !m_provide(showsOwn ? Background::Include : Background::Exclude))
    return false;
  const bool leavesFile = options.backdrop != m_options.backdrop && !isFile(options.backdrop);
  m_options = options;
  m_options.keep(UserDefaults::standard());
  rememberedChannel() = options.channel;
  showChannel();
  m_view.setOptions(options);
  if (!leavesFile) return true;
  m_loader.clear();
  m_view.setBackdrop({});
  return true;
}

bool PictureChecks::change(const PictureOptions::Change& apply) {
  PictureOptions options = m_options;
  apply(options);
  return setOptions(options);
}

void PictureChecks::showFile(Kind kind, const QString& path) {
  m_loader.load(kind, path);
}

void PictureChecks::takeFile(Kind kind, const QString& path) {
  const bool isStill = kind == Kind::Still;
  const bool isTaken = change([&](PictureOptions& options) {
    options.backdrop = isStill ? Backdrop::Still : Backdrop::Movie;
    (isStill ? options.still : options.movie) = path;
  });
  if (!isTaken) m_loader.clear();
}

void PictureChecks::takeFailure(Kind kind, const foundation::Error& error) {
  // One that was kept from another day: there is nothing else to go on with.
  if (isFile(m_options.backdrop) && !m_view.hasBackdrop())
    change([](PictureOptions& options) { options.backdrop = Backdrop::Own; });
  tell(kind == Kind::Still ? tr("The still cannot be shown") : tr("The movie cannot be played"),
       QStringLiteral("%1: %2").arg(QFileInfo(error.file).fileName(), error.message));
}

void PictureChecks::tell(const QString& title, const QString& text) {
  if (m_row.isVisible()) return m_row.setNotice(QStringLiteral("%1 – %2").arg(title, text));
  widgets::TYAlert::begin(&m_view, {.title = title, .text = text});
}

void PictureChecks::setZoom(int percent) {
  rememberedZoom() = percent;
  m_view.setZoom(percent);
}

void PictureChecks::showScale() {
  rememberedZoom() = m_view.geometry().zoom();
  m_loader.setSize(m_view.geometry().shownPixels());
  const int percent = qRound(m_view.geometry().factor() * 100);
  const bool isPlain = percent == 100 && !m_view.geometry().isLargerThanView();
  m_row.setScale(isPlain || !m_view.failureTitle().isEmpty() ? std::nullopt
                                                             : std::optional(percent));
}

void PictureChecks::showChannel() {
  const Channel channel = m_options.channel;
  m_row.setPartShown(channel == Channel::Key    ? tr("Key")
                     : channel == Channel::Fill ? tr("Fill")
                                                : QString());
}

bool PictureChecks::takeKey(const QKeyEvent& event) {
  if (event.modifiers() & ~Qt::KeypadModifier) return false;
  const auto choose = [this](Channel channel) {
    change([channel](PictureOptions& options) { options.channel = channel; });
    return true;
  };
  switch (event.key()) {
    case Qt::Key_0:
      return setZoom(PictureGeometry::fit), true;
    case Qt::Key_1:
      return setZoom(100), true;
    case Qt::Key_2:
      return setZoom(200), true;
    case Qt::Key_P:
      return choose(Channel::Picture);
    case Qt::Key_K:
      return choose(Channel::Key);
    case Qt::Key_F:
      return choose(Channel::Fill);
    case Qt::Key_S:
      change([](PictureOptions& options) { options.showsSafeAreas = !options.showsSafeAreas; });
      return true;
    default:
      return moveByKey(event.key());
  }
}

bool PictureChecks::moveByKey(int key) {
  if (!m_view.geometry().isLargerThanView()) return false;
  if (key == Qt::Key_Left)
    m_view.moveBy({keyDistance, 0});
  else if (key == Qt::Key_Right)
    m_view.moveBy({-keyDistance, 0});
  else if (key == Qt::Key_Up)
    m_view.moveBy({0, keyDistance});
  else if (key == Qt::Key_Down)
    m_view.moveBy({0, -keyDistance});
  else
    return false;
  return true;
}

bool PictureChecks::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::ContextMenu) return false;
  popUp(static_cast<QContextMenuEvent*>(event)->globalPos());
  return true;
}

PictureMenu::State PictureChecks::menuState() const {
  return {m_options, m_view.geometry().zoom(), m_view.picture() != nullptr, m_isInterlaced};
}

PictureMenu::Commands PictureChecks::commands() {
  return {.zoom = [this](int percent) { setZoom(percent); },
          .change = [this](const PictureOptions::Change& apply) { change(apply); },
          .showFile = [this](Kind kind, const QString& path) { showFile(kind, path); },
          .chooseFile = [this](Kind kind) { chooseFile(kind); },
          .chooseColor = [this] { chooseColor(); },
          .save = [this](PictureSaver::Part part) { save(part); }};
}

QMenu* PictureChecks::made(bool isWhole) {
  auto* menu = new QMenu(&m_view);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  PictureMenu commands(*menu, menuState(), this->commands());
  if (isWhole)
    commands.addAll();
  else
    commands.addZoom();
  return menu;
}

void PictureChecks::popUp(bool isWhole, const QWidget& above) {
  QMenu* menu = made(isWhole);
  const QPoint corner = above.mapToGlobal(QPoint(0, 0));
  menu->popup(corner - QPoint(0, menu->sizeHint().height() + menuGap));
}

void PictureChecks::popUp(const QPoint& globalPoint) {
  made(true)->popup(globalPoint);
}

void PictureChecks::chooseFile(Kind kind) {
  const bool isStill = kind == Kind::Still;
  const QString present = isStill ? m_options.still : m_options.movie;
  const QString folder =
      UserDefaults::standard()
          .value(isStill ? QStringLiteral("imagesLibraryPath") : QStringLiteral("movieLibraryPath"))
          .toString();
  widgets::FileChooser::open(m_view, isStill ? tr("Background Still") : tr("Background Movie"),
                             isStill ? widgets::FileChooser::Images : widgets::FileChooser::Movies,
                             QFileInfo::exists(present) ? present : folder,
                             [this, kind](const QString& path) { showFile(kind, path); });
}

void PictureChecks::chooseColor() {
  const PictureOptions before = m_options;
  const auto showColor = [this](const QColor& color) {
    change([&](PictureOptions& options) {
      options.backdrop = Backdrop::Color;
      options.color = color;
    });
  };
  showColor(before.color);
  auto* popover = new widgets::ColorPopover(before.color, false, &m_view);
  connect(popover, &widgets::ColorPopover::colorEdited, this, showColor);
  connect(popover, &widgets::ColorPopover::finished, this, [this, before](bool kept) {
    if (kept) return;
    setOptions(before);
    if (before.backdrop == Backdrop::Still) showFile(Kind::Still, before.still);
    if (before.backdrop == Backdrop::Movie) showFile(Kind::Movie, before.movie);
  });
  popover->showBeside(m_row.isVisible() ? m_row.pictureButtonRect()
                                        : QRect(QCursor::pos(), QSize(1, 1)));
}

void PictureChecks::save(PictureSaver::Part part) {
  if (!m_view.picture()) return;
  PictureSaver::save(
      m_view, {m_view.picture(), m_options.channel, part, m_name},
      [this](const foundation::Result<QString>& written) {
        if (!written)
          tell(tr("The picture could not be saved"),
               QStringLiteral("%1: %2").arg(QFileInfo(written.error().file).fileName(),
                                            written.error().message));
        else if (m_row.isVisible())
          m_row.setNotice(tr("Saved %1").arg(QFileInfo(*written).fileName()));
      });
}

}  // namespace preview
