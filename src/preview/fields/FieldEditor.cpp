#include "preview/fields/FieldEditor.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>

#include "preview/fields/ColorEditor.h"
#include "preview/fields/MenuEditor.h"
#include "preview/fields/NumberEditor.h"
#include "preview/fields/PictureEditor.h"
#include "preview/fields/SwitchEditor.h"
#include "preview/fields/TextEditor.h"

namespace preview {

using runtime::PortType;

namespace {

/// Return and Esc are for what is typed.
bool isButton(const QObject* control) {
  return qobject_cast<const QAbstractButton*>(control) || qobject_cast<const QComboBox*>(control);
}

}  // namespace

FieldEditor::FieldEditor(QWidget* parent) : QWidget(parent), m_line(new QHBoxLayout(this)) {
  m_line->setContentsMargins(0, 0, 0, 0);
  m_line->setSpacing(8);
}

FieldEditor* FieldEditor::forField(const Field& field) {
  switch (field.port.type) {
    case PortType::Boolean:
      return new SwitchEditor;
    case PortType::Index:
      if (!field.port.menu.isEmpty()) return new MenuEditor(field.port);
      return new NumberEditor(field.port);
    case PortType::Number:
      return new NumberEditor(field.port);
    case PortType::Color:
      return new ColorEditor;
    case PortType::Image:
      return new PictureEditor;
    default:
      return new TextEditor(field.port);
  }
}

void FieldEditor::setInvalid(bool invalid) {
  QWidget& shown = control();
  if (shown.property("invalid").toBool() == invalid) return;
  shown.setProperty("invalid", invalid);
  shown.update();
}

bool FieldEditor::eventFilter(QObject* watched, QEvent* event) {
  // Text fields keep what goes up to themselves, and a trigger would stay pressed.
  if (event->type() == QEvent::KeyRelease && !isButton(watched)) {
    event->ignore();
    return true;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() == Qt::Key_Backspace && key->modifiers() == Qt::AltModifier) {
    Q_EMIT resetRequested();
    return true;
  }
  if (isButton(watched)) return false;
  if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
    commitEntry();
    if (!hasEntry()) Q_EMIT left();
    return true;
  }
  // While a value is scrubbed, that is what Esc takes back.
  if (key->key() != Qt::Key_Escape || QGuiApplication::mouseButtons() != Qt::NoButton) return false;
  if (hasEntry())
    dropEntry();
  else
    Q_EMIT left();
  return true;
}

}  // namespace preview
