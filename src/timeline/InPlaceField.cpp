#include "timeline/InPlaceField.h"

#include <QKeyEvent>

namespace timeline {

InPlaceField::InPlaceField(const QString& text, QWidget* parent, Kept kept)
    : QLineEdit(text, parent), m_before(text), m_kept(std::move(kept)) {
  selectAll();
}

void InPlaceField::end() {
  m_hasEnded = true;
  hide();
  deleteLater();
}

void InPlaceField::keep() {
  if (m_hasEnded) return;
  const bool changed = text() != m_before;
  end();
  if (changed) m_kept(text());
}

void InPlaceField::drop() {
  if (!m_hasEnded) end();
}

bool InPlaceField::event(QEvent* event) {
  // Escape and Return are this field's, whatever commands have them.
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  return QLineEdit::event(event);
}

void InPlaceField::keyPressEvent(QKeyEvent* event) {
  QWidget* owner = parentWidget();
  if (event->key() == Qt::Key_Escape)
    drop();
  else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    keep();
  else
    return QLineEdit::keyPressEvent(event);
  if (owner) owner->setFocus();
}

void InPlaceField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) keep();
}

}  // namespace timeline
