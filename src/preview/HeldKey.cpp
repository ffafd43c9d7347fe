#include "preview/HeldKey.h"

#include <QKeyEvent>

namespace preview {

namespace {
/// In two parts: a press that lay in the queue while the program was busy is seen between them.
constexpr int parts = 2;
}  // namespace

HeldKey::HeldKey(QObject* parent) : QObject(parent) {
  m_timer.setInterval(longestGap / parts);
  m_timer.setTimerType(Qt::PreciseTimer);
  connect(&m_timer, &QTimer::timeout, this, &HeldKey::wait);
}

bool HeldKey::isRepetition(const QKeyEvent& press) const {
  if (press.isAutoRepeat()) return true;
  const quint64 gap = press.timestamp() - m_releaseTime;
  return m_timer.isActive() && gap <= static_cast<quint64>(longestGap.count());
}

bool HeldKey::press(const QKeyEvent& event) {
  if (isRepetition(event)) {
    m_timer.stop();
    return false;
  }
  // The release may have gone to a menu.
  letGo();
  m_isDown = true;
  return true;
}

void HeldKey::release(const QKeyEvent& event) {
  if (event.isAutoRepeat() || !m_isDown) return;
  m_releaseTime = event.timestamp();
  m_waited = 0;
  m_timer.start();
}

void HeldKey::wait() {
  if (++m_waited == parts) letGo();
}

void HeldKey::letGo() {
  m_timer.stop();
  if (std::exchange(m_isDown, false)) Q_EMIT released();
}

}  // namespace preview
