#include "widgets/TYFocusRing.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QFocusFrame>
#include <QKeyEvent>
#include <QMenuBar>

namespace widgets {
namespace {

bool takesRing(const QWidget* widget) {
  if (const auto* box = qobject_cast<const QComboBox*>(widget)) return !box->isEditable();
  return qobject_cast<const QAbstractButton*>(widget) ||
         qobject_cast<const QAbstractSlider*>(widget) || widget->property("focusRing").toBool();
}

bool isByKeyboard(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
         reason == Qt::ShortcutFocusReason;
}

}  // namespace

TYFocusRing::TYFocusRing() {
  qApp->installEventFilter(this);
}

TYFocusRing::~TYFocusRing() {
  hide();
}

bool TYFocusRing::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::ApplicationDeactivate) showMnemonics(false);
  if ((type == QEvent::KeyPress || type == QEvent::KeyRelease) &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt)
    showMnemonics(type == QEvent::KeyPress);
  if (type == QEvent::FocusIn || type == QEvent::FocusOut || type == QEvent::MouseButtonPress) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || !takesRing(widget)) return false;
    const bool shown =
        type == QEvent::FocusIn && isByKeyboard(static_cast<QFocusEvent*>(event)->reason());
    if (shown) {
      show(widget);
    } else if (m_frame && m_frame->widget() == widget) {
      hide();
    }
  }
  return false;
}

void TYFocusRing::show(QWidget* widget) {
  // The frame lives among the widget's siblings and goes with their parent, so it may be gone.
  if (!m_frame) m_frame = new QFocusFrame(widget);
  m_frame->setWidget(widget);
}

void TYFocusRing::showMnemonics(bool shown) {
  if (shown == m_mnemonics) return;
  m_mnemonics = shown;
  for (QWidget* widget : QApplication::allWidgets())
    if (qobject_cast<QMenuBar*>(widget) || qobject_cast<QMenu*>(widget)) widget->update();
}

void TYFocusRing::hide() {
  delete m_frame;
}

}  // namespace widgets
