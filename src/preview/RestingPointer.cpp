#include "preview/RestingPointer.h"

#include <QMouseEvent>

namespace preview {

namespace {
constexpr std::chrono::seconds restingTime(2);
}

RestingPointer::RestingPointer(QWidget& widget) : QObject(&widget), m_widget(widget) {
  widget.installEventFilter(this);
  m_timer.setSingleShot(true);
  m_timer.setInterval(restingTime);
  connect(&m_timer, &QTimer::timeout, this, &RestingPointer::hide);
}

void RestingPointer::setHides(bool hides) {
  if (hides == m_hides) return;
  m_hides = hides;
  m_widget.setMouseTracking(hides);
  m_last = QCursor::pos();
  showAgain();
  if (hides)
    m_timer.start();
  else
    m_timer.stop();
}

void RestingPointer::hide() {
  m_shown = m_widget.cursor();
  m_isHidden = true;
  m_widget.setCursor(Qt::BlankCursor);
}

void RestingPointer::showAgain() {
  if (!std::exchange(m_isHidden, false)) return;
  // A cursor of its own that is the arrow would hide the one of a window around it.
  if (m_shown.shape() == Qt::ArrowCursor)
    m_widget.unsetCursor();
  else
    m_widget.setCursor(m_shown);
}

void RestingPointer::takeMove(const QPoint& globalPoint) {
  // A window that changes below the pointer tells of moves too.
  if (std::exchange(m_last, globalPoint) == globalPoint) return;
  showAgain();
  m_timer.start();
}

bool RestingPointer::eventFilter(QObject*, QEvent* event) {
  if (!m_hides) return false;
  if (event->type() == QEvent::MouseMove)
    takeMove(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
  else if (event->type() == QEvent::CursorChange && m_isHidden &&
           m_widget.cursor().shape() != Qt::BlankCursor)
    // The picture is zoomed with a key: another cursor, but for when it is seen again.
    hide();
  return false;
}

}  // namespace preview
