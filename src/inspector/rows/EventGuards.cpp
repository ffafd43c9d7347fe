#include "inspector/rows/EventGuards.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace inspector {

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

}  // namespace

void leaveWheelToPane(QWidget& control) {
  control.installEventFilter(new WheelGuard(&control));
}

void leaveUndoToWindow(QLineEdit& field) {
  field.installEventFilter(new UndoGuard(field));
}

}  // namespace inspector
