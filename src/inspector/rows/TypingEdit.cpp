#include "inspector/rows/TypingEdit.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

#include "inspector/InspectorContext.h"

namespace inspector {

TypingEdit::TypingEdit(InspectorContext& context, QWidget& editor)
    : QObject(&editor), m_context(context), m_editor(editor) {}

TypingEdit::~TypingEdit() = default;

void TypingEdit::typed(const QString& stepName) {
  if (m_open && m_context.isEditing()) return;
  m_context.begin(stepName);
  if (!std::exchange(m_open, true)) QCoreApplication::instance()->installEventFilter(this);
}

void TypingEdit::end() {
  if (!std::exchange(m_open, false)) return;
  QCoreApplication::instance()->removeEventFilter(this);
  m_context.commit();
  Q_EMIT ended();
}

bool TypingEdit::isInside(const QObject* object) const {
  const auto* widget = qobject_cast<const QWidget*>(object);
  // Windows of the platform get events first; they are not the place.
  return !widget || widget == &m_editor || m_editor.isAncestorOf(widget);
}

bool TypingEdit::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusOut:
      if (watched == &m_editor) end();
      break;
    case QEvent::MouseButtonPress:
    case QEvent::DragEnter:
      if (!isInside(watched)) end();
      break;
    case QEvent::Shortcut:
      end();
      break;
    default:
      break;
  }
  return false;
}

}  // namespace inspector
