#include "preview/fields/TextEditor.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QLineEdit>

#include "playout/ValueJson.h"
#include "preview/fields/LinesEdit.h"

namespace preview {

using runtime::PortType;

namespace {

constexpr qsizetype longestLine = 2000;

QString textOf(const Field& field) {
  const runtime::Value& value = field.current();
  const PortType type = field.port.type == PortType::Virtual ? value.type() : field.port.type;
  if (type != PortType::Structure) return value.toString();
  const QJsonValue json = playout::ValueJson::of(value, type);
  const QJsonDocument document =
      json.isArray() ? QJsonDocument(json.toArray()) : QJsonDocument(json.toObject());
  return QString::fromUtf8(document.toJson(QJsonDocument::Indented)).trimmed();
}

bool needsLines(const QString& text) {
  return text.size() > longestLine || text.contains(u'\n');
}

}  // namespace

TextEditor::TextEditor(const runtime::PortAttributes& port, QWidget* parent)
    : FieldEditor(parent), m_line(new QLineEdit) {
  watch(*m_line);
  line().addWidget(m_line, 1);
  connect(m_line, &QLineEdit::textEdited, this, [this] { Q_EMIT refused({}); });
  if (port.type == PortType::Structure) useLines();
}

QWidget& TextEditor::control() const {
  return m_lines ? static_cast<QWidget&>(*m_lines) : *m_line;
}

QString TextEditor::text() const {
  return m_lines ? m_lines->toPlainText() : m_line->text();
}

void TextEditor::showText(const QString& text) {
  if (!m_lines && needsLines(text)) useLines();
  if (m_lines) {
    m_lines->setPlainText(text);
    return;
  }
  m_line->setText(text);
  m_line->setCursorPosition(0);
}

void TextEditor::showValue(const Field& field) {
  const bool isTyping = hasEntry();
  m_value = textOf(field);
  if (!isTyping && text() != m_value) showText(m_value);
}

void TextEditor::entryTaken(const Field& field) {
  m_value = text();
  showValue(field);
}

bool TextEditor::hasEntry() const {
  return text() != m_value;
}

void TextEditor::commitEntry() {
  if (hasEntry()) Q_EMIT enteredText(text());
}

void TextEditor::dropEntry() {
  showText(m_value);
  Q_EMIT refused({});
}

void TextEditor::useLines() {
  m_lines = new LinesEdit;
  m_lines->setAccessibleName(m_line->accessibleName());
  m_lines->setObjectName(m_line->objectName());
  m_lines->setToolTip(m_line->toolTip());
  m_lines->setPlainText(m_line->text());
  watch(*m_lines);
  line().replaceWidget(m_line, m_lines);
  setTabOrder(m_line, m_lines);
  const bool hadFocus = m_line->hasFocus();
  m_line->removeEventFilter(this);
  m_line->deleteLater();
  m_line->hide();
  m_line = nullptr;
  if (hadFocus) m_lines->setFocus();
  connect(m_lines, &QPlainTextEdit::textChanged, this, [this] { Q_EMIT refused({}); });
}

void TextEditor::breakLine() {
  if (m_lines) {
    m_lines->insertPlainText(QStringLiteral("\n"));
    return;
  }
  const int position = m_line->cursorPosition();
  const QString text = m_line->text();
  useLines();
  m_lines->setPlainText(text.left(position) + u'\n' + text.mid(position));
  QTextCursor cursor = m_lines->textCursor();
  cursor.setPosition(position + 1);
  m_lines->setTextCursor(cursor);
}

/// A field of one line would make blanks of line ends.
void TextEditor::paste() {
  const int position =
      m_line->hasSelectedText() ? m_line->selectionStart() : m_line->cursorPosition();
  m_line->del();
  useLines();
  QTextCursor cursor = m_lines->textCursor();
  cursor.setPosition(std::min<int>(position, static_cast<int>(text().size())));
  m_lines->setTextCursor(cursor);
  m_lines->paste();
}

bool TextEditor::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut &&
      static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
    commitEntry();
    return false;
  }
  if (event->type() != QEvent::KeyPress) return FieldEditor::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
  if (isReturn && key->modifiers().testFlag(Qt::ShiftModifier)) {
    breakLine();
    return true;
  }
  if (!m_lines && key->matches(QKeySequence::Paste) &&
      needsLines(QGuiApplication::clipboard()->text().trimmed())) {
    paste();
    return true;
  }
  return FieldEditor::eventFilter(watched, event);
}

}  // namespace preview
