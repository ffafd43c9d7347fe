#include "app/WindowLayout.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QScreen>

namespace app {

namespace {

constexpr QSize smallestWindow(PanelFolding::widthForLibrary, 720);
/// On screens that have no room for more, as at 200 % on a small one.
constexpr QSize smallestOnSmallScreens(560, 360);
constexpr int layoutVersion = 1;
const QString windowStateKey = QStringLiteral("windowState");

}  // namespace

void WindowLayout::setStandardSizes(const QSize& screenSize) {
  const bool fits = screenSize.expandedTo(smallestWindow) == screenSize;
  m_window.setMinimumSize(fits ? smallestWindow : smallestOnSmallScreens);
  m_window.resize(smallestWindow.expandedTo(screenSize * 3 / 4).boundedTo(screenSize));
  const bool narrow = screenSize.width() < 1440;
  const auto give = [this](const char* dock, int size, Qt::Orientation orientation) {
    m_window.resizeDocks(m_window.findChildren<QDockWidget*>({QString::fromLatin1(dock)}), {size},
                         orientation);
  };
  give("library", narrow ? 212 : 452, Qt::Horizontal);
  give("inspector", narrow ? 304 : 340, Qt::Horizontal);
  give("timeline", !fits ? 158 : narrow ? 230 : 284, Qt::Vertical);
}

void WindowLayout::restore(const foundation::UserDefaults& defaults) {
  const QVariant kept = defaults.value(windowStateKey);
  setStandardSizes(m_window.screen()->availableSize());
  if (!kept.isValid()) {
    // No window was closed before: the first one fills the screen.
    m_window.setWindowState(Qt::WindowMaximized);
    return;
  }
  const QVariantMap state = kept.toMap();
  // Before the geometry: told to be maximised, a hidden QMainWindow keeps a second copy of the
  // layout that it takes back later, with separators that are gone by then.
  m_window.restoreState(state.value(QStringLiteral("layout")).toByteArray(), layoutVersion);
  m_window.restoreGeometry(state.value(QStringLiteral("geometry")).toByteArray());
  m_folding.restore(state.value(QStringLiteral("folded")).toStringList());
}

void WindowLayout::save(foundation::UserDefaults& defaults) const {
  defaults.setValue(QVariantMap{{QStringLiteral("geometry"), m_window.saveGeometry()},
                                {QStringLiteral("layout"), m_window.saveState(layoutVersion)},
                                {QStringLiteral("folded"), m_folding.folded()}},
                    windowStateKey);
}

}  // namespace app
