#include "inspector/rows/TextRow.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include "inspector/InspectorContext.h"
#include "inspector/TYTextPanel.h"
#include "inspector/rows/TypingEdit.h"
#include "widgets/EventGuards.h"

namespace inspector {

TextRow::TextRow(InspectorContext& context, const QString& label, Panel panel)
    : InspectorRow(context, label), m_field(new QLineEdit) {
  widgets::leaveUndoToWindow(*m_field);
  m_field->setMaxLength(longestInField + 1);
  m_field->installEventFilter(this);
  m_typing = new TypingEdit(context, *m_field);
  addControl(m_field, 1);
  connect(m_field, &QLineEdit::textEdited, this, &TextRow::write);
  connect(m_typing, &TypingEdit::ended, this, [this] {
    // What was typed is history of the document now, and no more of the field.
    const int cursor = m_field->cursorPosition();
    m_field->setText(m_field->text());
    m_field->setCursorPosition(cursor);
  });
  if (panel == Panel::With) {
    auto* button = new QPushButton(tr("Edit..."));
    connect(button, &QPushButton::clicked, this, &TextRow::openPanel);
    addControl(button, 0);
  }
}

void TextRow::write(const QString& text) {
  if (!isBound()) return;
  if (text.size() > longestInField) {
    setComplaint(tr("At most %L1 characters fit into a field. The text was not taken over.")
                     .arg(longestInField));
    revert();
    return;
  }
  setComplaint({});
  if (!m_typing->isOpen()) {
    m_before = binding().value().toString();
    m_wasMixed = binding().isMixed();
  }
  m_typing->typed(binding().stepName);
  binding().setAll(text);
}

void TextRow::revert() {
  m_field->setText(binding().isMixed() ? QString() : binding().value().toString());
}

void TextRow::showValues() {
  const bool mixed = binding().isMixed();
  const QString value = binding().value().toString();
  const bool fits = value.size() <= longestInField;
  m_field->setReadOnly(!fits);
  m_field->setPlaceholderText(mixed ? QStringLiteral("—") : QString());
  const QString shown = mixed  ? QString()
                        : fits ? value
                               : value.left(longestInField / 10) + QStringLiteral("…");
  if (m_typing->isOpen() || m_field->text() == shown) return;
  m_field->setText(shown);
  m_field->setCursorPosition(0);
}

void TextRow::nameControls(const QString& name) {
  m_field->setAccessibleName(name);
  if (auto* button = findChild<QPushButton*>()) button->setAccessibleName(tr("Edit %1").arg(name));
}

void TextRow::dropEntries() {
  m_typing->end();
}

void TextRow::openPanel() {
  if (!isBound()) return;
  m_typing->end();
  TYTextPanel::edit(*this, context(), binding(), label());
}

bool TextRow::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool ends = key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter;
  if (!ends || !m_typing->isOpen()) return false;
  event->accept();
  if (event->type() == QEvent::ShortcutOverride) return true;
  if (key == Qt::Key_Escape) {
    context().cancel();
    m_typing->end();
    m_field->setText(m_wasMixed ? QString() : m_before);
  } else {
    m_typing->end();
  }
  m_field->selectAll();
  return true;
}

}  // namespace inspector
