#include "widgets/EventGuards.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLineEdit>

namespace widgets {

namespace {

class WheelGuard : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Wheel) return false;
    event->ignore();
    return true;
  }
};

class UndoGuard : public QObject {
 public:
  explicit UndoGuard(QLineEdit& field) : QObject(&field), m_field(field) {}
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::ShortcutOverride) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool undoes = key->matches(QKeySequence::Undo) && !m_field.isUndoAvailable();
    const bool redoes = key->matches(QKeySequence::Redo) && !m_field.isRedoAvailable();
    if (!undoes && !redoes) return false;
    event->ignore();
    return true;
  }

 private:
  QLineEdit& m_field;
};

class SpaceGuard : public QObject {
 public:
  explicit SpaceGuard(QAbstractButton& button) : QObject(&button), m_button(button) {}
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Space) {
      event->ignore();
      return true;
    }
    if (event->type() != QEvent::KeyPress || (key != Qt::Key_Return && key != Qt::Key_Enter))
      return false;
    m_button.click();
    return true;
  }

 private:
  QAbstractButton& m_button;
};

}  // namespace

void leaveWheelToPane(QWidget& control) {
  control.installEventFilter(new WheelGuard(&control));
}

void leaveUndoToWindow(QLineEdit& field) {
  field.installEventFilter(new UndoGuard(field));
}

void leaveSpaceToWindow(QAbstractButton& button) {
  button.installEventFilter(new SpaceGuard(button));
}

}  // namespace widgets
