#include "app/FirstFrame.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace app {

FirstFrame::FirstFrame(std::function<void()> shown) : m_shown(std::move(shown)) {
  qApp->installEventFilter(this);
}

bool FirstFrame::eventFilter(QObject* object, QEvent* event) {
  const bool isPaint = event->type() == QEvent::Paint && !m_painted;
  if (!isPaint || !object->isWidgetType() || !static_cast<QWidget*>(object)->isWindow())
    return false;
  m_painted = true;
  // A timer without delay waits until the queue of events is empty, further paints included.
  QTimer::singleShot(0, this, [this] {
    QGuiApplication::sync();
    m_shown();
  });
  return false;
}

}  // namespace app
