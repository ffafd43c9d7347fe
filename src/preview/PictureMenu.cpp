#include "preview/PictureMenu.h"

#include <QFileInfo>
#include <QFontMetrics>
#include <QMenu>

#include "preview/PictureGeometry.h"

namespace preview {

using Backdrop = PictureOptions::Backdrop;
using Channel = PictureOptions::Channel;
using Kind = BackdropSource::Kind;
using Part = PictureSaver::Part;

namespace {
constexpr int widestName = 240;
}

PictureMenu::PictureMenu(QMenu& menu, State state, Commands commands)
    : m_menu(menu), m_state(std::move(state)), m_commands(std::move(commands)) {}

QAction* PictureMenu::add(QMenu& menu, const QString& text, std::optional<bool> isOn,
                          const std::function<void()>& run, int key) {
  // Keys are the window's; the menu only names them.
  QAction* action = menu.addAction(key ? text + u'\t' + QKeySequence(key).toString() : text);
  action->setCheckable(isOn.has_value());
  action->setChecked(isOn.value_or(false));
  QObject::connect(action, &QAction::triggered, &m_menu, run);
  return action;
}

void PictureMenu::addChange(QMenu& menu, const QString& text, bool isOn,
                            const PictureOptions::Change& apply, int key) {
  add(
      menu, text, isOn, [change = m_commands.change, apply] { change(apply); }, key);
}

void PictureMenu::addZoom() {
  const auto addStep = [this](const QString& text, int percent, int key) {
    add(
        m_menu, text, m_state.zoom == percent, [zoom = m_commands.zoom, percent] { zoom(percent); },
        key);
  };
  addStep(tr("Fit"), PictureGeometry::fit, Qt::Key_0);
  addStep(tr("100 %"), 100, Qt::Key_1);
  addStep(tr("200 %"), 200, Qt::Key_2);
}

void PictureMenu::addAll() {
  addZoom();
  m_menu.addSeparator();
  addChannels();
  m_menu.addSeparator();
  addBackdrops(*m_menu.addMenu(tr("Background")));
  addChange(
      m_menu, tr("Safe Areas"), m_state.options.showsSafeAreas,
      [](PictureOptions& options) { options.showsSafeAreas = !options.showsSafeAreas; }, Qt::Key_S);
  m_menu.addSeparator();
  addSaving();
}

void PictureMenu::addChannels() {
  const auto addChannel = [this](const QString& text, Channel channel, int key) {
    addChange(
        m_menu, text, m_state.options.channel == channel,
        [channel](PictureOptions& options) { options.channel = channel; }, key);
  };
  addChannel(tr("Picture"), Channel::Picture, Qt::Key_P);
  addChannel(tr("Key Alone"), Channel::Key, Qt::Key_K);
  addChannel(tr("Fill Alone"), Channel::Fill, Qt::Key_F);
}

void PictureMenu::addBackdrops(QMenu& menu) {
  const PictureOptions& now = m_state.options;
  const auto addBackdrop = [&](const QString& text, Backdrop backdrop) {
    addChange(menu, text, now.backdrop == backdrop,
              [backdrop](PictureOptions& options) { options.backdrop = backdrop; });
  };
  addBackdrop(tr("Document's Own"), Backdrop::Own);
  addBackdrop(tr("Chessboard"), Backdrop::Chessboard);
  addBackdrop(tr("Color"), Backdrop::Color);
  addFile(menu, Kind::Still, now.still, now.backdrop == Backdrop::Still);
  addFile(menu, Kind::Movie, now.movie, now.backdrop == Backdrop::Movie);
  menu.addSeparator();
  add(menu, tr("Choose Color..."), {}, m_commands.chooseColor);
  const auto addChoice = [&](const QString& text, Kind kind) {
    add(menu, text, {}, [choose = m_commands.chooseFile, kind] { choose(kind); });
  };
  addChoice(tr("Choose Still..."), Kind::Still);
  addChoice(tr("Choose Movie..."), Kind::Movie);
}

void PictureMenu::addFile(QMenu& menu, Kind kind, const QString& path, bool isOn) {
  if (path.isEmpty()) return;
  QString name =
      menu.fontMetrics().elidedText(QFileInfo(path).fileName(), Qt::ElideMiddle, widestName);
  name.replace(u'&', QStringLiteral("&&"));
  QAction* action =
      add(menu, name, isOn, [show = m_commands.showFile, kind, path] { show(kind, path); });
  action->setToolTip(path);
}

void PictureMenu::addSaving() {
  const auto addPart = [this](const QString& text, Part part) {
    add(m_menu, text, {}, [save = m_commands.save, part] {
      save(part);
    })->setEnabled(m_state.hasPicture);
  };
  addPart(tr("Save Picture..."), Part::Frame);
  if (!m_state.isInterlaced) return;
  addPart(tr("Save Upper Field..."), Part::UpperField);
  addPart(tr("Save Lower Field..."), Part::LowerField);
}

}  // namespace preview
