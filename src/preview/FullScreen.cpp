#include "preview/FullScreen.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>

namespace preview {

namespace {
/// Of a window's frame: where the window is put it has none yet.
constexpr QPoint usualFrame(2, 32);
/// Entering and changing the screen go through other states, and window managers tell late.
constexpr std::chrono::milliseconds settlingTime(200);
}  // namespace

FullScreen::FullScreen(QWidget& window) : QObject(&window), m_window(window) {
  window.installEventFilter(this);
  m_check.setSingleShot(true);
  m_check.setInterval(settlingTime);
  connect(&m_check, &QTimer::timeout, this, &FullScreen::checkState);
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, &FullScreen::screenWasRemoved);
}

void FullScreen::enter(QScreen& screen) {
  if (!isOn()) m_windowedGeometry = m_window.geometry();
  m_screen = &screen;
  Q_EMIT changed(true);
  // A window that is full screen already would stay where it is.
  m_window.setWindowState(m_window.windowState() & ~Qt::WindowFullScreen);
  m_window.setGeometry(screen.geometry());
  m_window.setWindowState(m_window.windowState() | Qt::WindowFullScreen);
  m_window.show();
}

void FullScreen::leave() {
  if (!isOn()) return;
  m_screen = nullptr;
  m_check.stop();
  m_window.setWindowState(m_window.windowState() & ~Qt::WindowFullScreen);
  Q_EMIT changed(false);
  m_window.setGeometry(m_windowedGeometry);
}

bool FullScreen::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && isOn()) m_check.start();
  return false;
}

void FullScreen::checkState() {
  // One that was put away for a moment comes back full screen.
  if (!(m_window.windowState() & (Qt::WindowFullScreen | Qt::WindowMinimized))) leave();
}

void FullScreen::screenWasRemoved(const QScreen* screen) {
  if (!isOn() || screen != m_screen) return;
  leave();
  if (const QScreen* first = QGuiApplication::primaryScreen())
    m_window.move(first->availableGeometry().topLeft() + usualFrame);
  Q_EMIT screenIsGone();
}

}  // namespace preview
