#include "widgets/TYAlert.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "widgets/GlyphView.h"
#include "widgets/MessageList.h"
#include "widgets/TokenLabel.h"

namespace widgets {
namespace {

constexpr int kGlyph = 24;
constexpr int kGlyphGap = 14;

GlyphView* glyphFor(TYAlert::Kind kind) {
  switch (kind) {
    case TYAlert::Kind::Warning:
      return new GlyphView(QStringLiteral("Warning"), kGlyph, Token::Warning);
    case TYAlert::Kind::Error:
      return new GlyphView(QStringLiteral("Broken"), kGlyph, Token::Broken);
    case TYAlert::Kind::Information:
      break;
  }
  return new GlyphView(QStringLiteral("Info"), kGlyph, Token::Accent);
}

}  // namespace

bool TYAlert::isSuppressed(const QString& preferencesKey,
                           const foundation::UserDefaults& defaults) {
  return !preferencesKey.isEmpty() && defaults.value(preferencesKey).toBool();
}

TYAlert* TYAlert::begin(QWidget* window, const Message& message,
                        std::function<void(Answer)> answered, foundation::UserDefaults& defaults) {
  if (isSuppressed(message.preferencesKey, defaults)) {
    // Later, as an answer by hand would come.
    if (answered)
      QTimer::singleShot(0, window,
                         [answered = std::move(answered)] { answered(Answer::Default); });
    return nullptr;
  }
  auto* alert = new TYAlert(window, message, std::move(answered), defaults);
  alert->present();
  return alert;
}

TYAlert::TYAlert(QWidget* window, const Message& message, std::function<void(Answer)> answered,
                 foundation::UserDefaults& defaults)
    : TYSheet(window),
      m_preferencesKey(message.preferencesKey),
      m_hasAlternate(!message.alternateButton.isEmpty()),
      m_answered(std::move(answered)),
      m_defaults(defaults) {
  setAccessibleName(message.title);
  setAccessibleDescription(message.text);
  addHead(message);
  addButtons(message);
}

void TYAlert::addHead(const Message& message) {
  auto* row = new QHBoxLayout;
  row->setSpacing(kGlyphGap);
  row->addWidget(glyphFor(message.kind), 0, Qt::AlignTop);
  auto* column = new QVBoxLayout;
  column->setSpacing(6);
  for (auto* label : {new TokenLabel(message.title, TextStyle::SheetTitle, Token::Text),
                      new TokenLabel(message.text, TextStyle::Body, Token::Text2)}) {
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    if (label->text().isEmpty()) {
      delete label;
    } else {
      column->addWidget(label);
    }
  }
  if (!message.list.isEmpty()) {
    column->addSpacing(4);
    column->addWidget(new MessageList(message.list));
  }
  row->addLayout(column, 1);
  body()->addLayout(row);
}

void TYAlert::addButtons(const Message& message) {
  if (!m_preferencesKey.isEmpty()) {
    m_suppress = new QCheckBox(tr("Don't show this message again"));
    auto* indented = new QWidget;
    auto* row = new QHBoxLayout(indented);
    row->setContentsMargins(kGlyph + kGlyphGap, 0, 0, 0);
    row->addWidget(m_suppress);
    setFooterWidget(indented);
  }
  const auto add = [this](const QString& text, Answer given) {
    if (text.isEmpty()) return;
    connect(addButton(text, given == Answer::Default), &QPushButton::clicked, this,
            [this, given] { answer(given); });
  };
  add(message.otherButton, Answer::Other);
  add(message.alternateButton, Answer::Alternate);
  add(message.defaultButton, Answer::Default);
}

void TYAlert::cancelled() {
  answer(m_hasAlternate ? Answer::Alternate : Answer::Default);
}

void TYAlert::answer(Answer answer) {
  // An alternative is a refusal, which nobody means for ever.
  if (m_suppress && m_suppress->isChecked() && answer == Answer::Default)
    m_defaults.setValue(true, m_preferencesKey);
  const auto answered = std::move(m_answered);
  m_answered = nullptr;
  closeSheet();
  if (answered) answered(answer);
}

}  // namespace widgets
