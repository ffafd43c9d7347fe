#include "widgets/TYEmptyPanel.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/GlyphView.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TokenLabel.h"

namespace widgets {

TYEmptyPanel::TYEmptyPanel(const QString& glyph, const QString& title, const QString& line,
                           QWidget* parent)
    : QWidget(parent), m_button(new QPushButton) {
  auto* column = new QVBoxLayout(this);
  column->setSpacing(4);
  column->addStretch();
  if (!glyph.isEmpty()) {
    column->addWidget(new GlyphView(glyph, 48, Token::Text3), 0, Qt::AlignHCenter);
    column->addSpacing(6);
  }
  auto* heading = new TokenLabel(title, TextStyle::PanelTitle, Token::Text);
  auto* below = new TokenLabel(line, TextStyle::Body, Token::Text2);
  for (TokenLabel* label : {heading, below}) {
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    column->addWidget(label);
  }
  column->addSpacing(8);
  column->addWidget(m_button, 0, Qt::AlignHCenter);
  column->addStretch();
  m_button->hide();
  setAccessibleName(title);
  setAccessibleDescription(line);
  connect(m_button, &QPushButton::clicked, this, &TYEmptyPanel::buttonClicked);
}

void TYEmptyPanel::setButton(const QString& text) {
  m_button->setText(text);
  m_button->setVisible(!text.isEmpty());
}

}  // namespace widgets
