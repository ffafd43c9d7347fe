#include "inspector/TYTextPanel.h"

#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "inspector/InspectorContext.h"
#include "widgets/TokenLabel.h"

namespace inspector {

namespace {

constexpr int textHeight = 132;

/// Takes no more than fits; a text of megabytes would be laid out before it could be refused.
class BoundedText : public QPlainTextEdit {
 public:
  std::function<void()> refused;

 protected:
  void insertFromMimeData(const QMimeData* source) override {
    const qsizetype room = TYTextPanel::longest - document()->characterCount();
    if (source->text().size() > room)
      refused();
    else
      QPlainTextEdit::insertFromMimeData(source);
  }
};

}  // namespace

TYTextPanel* TYTextPanel::edit(QWidget& beside, InspectorContext& context, const Binding& binding,
                               const QString& title) {
  auto* panel = new TYTextPanel(beside, context, binding, title);
  panel->present();
  panel->m_text->setFocus(Qt::OtherFocusReason);
  panel->m_text->moveCursor(QTextCursor::End);
  return panel;
}

TYTextPanel::TYTextPanel(QWidget& beside, InspectorContext& context, const Binding& binding,
                         const QString& title)
    : TYSheet(&beside), m_context(context), m_binding(binding) {
  using widgets::TextStyle;
  using widgets::Token;
  setSheetWidth(480);
  auto* heading = new widgets::TokenLabel(title, TextStyle::SheetTitle, Token::Text);
  body()->addWidget(heading);
  auto* text = new BoundedText;
  m_text = text;
  m_text->setAccessibleName(title);
  m_text->setTabChangesFocus(true);
  m_text->setMinimumHeight(textHeight);
  body()->addWidget(m_text);
  m_note = new widgets::TokenLabel({}, TextStyle::Small, Token::Text3);
  body()->addWidget(m_note);
  m_count = new widgets::TokenLabel({}, TextStyle::Body, Token::Text3);
  setFooterWidget(m_count);
  connect(addButton(tr("Cancel")), &QPushButton::clicked, this, [this] { finish(false); });
  connect(addButton(tr("Ok"), true), &QPushButton::clicked, this, [this] { finish(true); });
  const bool mixed = binding.isMixed();
  m_note->setText(mixed ? tr("The texts differ. What you type replaces them all.")
                        : tr("Changes show on the canvas while you type."));
  setStringValue(mixed ? QString() : binding.value().toString());
  text->refused = [this] {
    m_note->setText(tr("At most %L1 characters fit. The text was not taken over.").arg(longest));
  };
  connect(m_text, &QPlainTextEdit::textChanged, this, &TYTextPanel::textPanelDidChange);
  connect(&context, &InspectorContext::objectsLeft, this, [this] {
    m_binding = {};
    finish(true);
  });
  context.begin(binding.stepName);
}

QString TYTextPanel::stringValue() const {
  return m_text->toPlainText();
}

void TYTextPanel::setStringValue(const QString& text) {
  m_text->setPlainText(text);
  m_last = text;
  showCount();
}

void TYTextPanel::textPanelDidChange() {
  const QString text = stringValue();
  showCount();
  if (text == m_last) return;
  m_last = text;
  m_binding.setAll(text);
}

void TYTextPanel::showCount() {
  const QString characters =
      m_last.size() == 1 ? tr("1 character") : tr("%L1 characters").arg(m_last.size());
  const int lines = m_text->blockCount();
  m_count->setText(
      tr("%1, %2").arg(characters, lines == 1 ? tr("1 line") : tr("%L1 lines").arg(lines)));
}

void TYTextPanel::finish(bool keep) {
  disconnect(&m_context, nullptr, this, nullptr);
  if (keep)
    m_context.commit();
  else
    m_context.cancel();
  closeSheet();
}

}  // namespace inspector
