#include "widgets/TokenLabel.h"

namespace widgets {

TokenLabel::TokenLabel(const QString& text, TextStyle style, Token token, QWidget* parent)
    : QLabel(text, parent), m_token(token) {
  setFont(TYStyleKit::font(style));
  // On the ground of buttons a label would else take the colour of their texts.
  setForegroundRole(QPalette::WindowText);
  takeColour();
  connect(&TYStyleKit::shared(), &TYStyleKit::themeChanged, this, &TokenLabel::takeColour);
}

void TokenLabel::takeColour() {
  QPalette palette;
  for (const auto group : {QPalette::Active, QPalette::Inactive})
    palette.setColor(group, QPalette::WindowText, TYStyleKit::colour(m_token));
  palette.setColor(QPalette::Disabled, QPalette::WindowText,
                   TYStyleKit::colour(Token::TextDisabled));
  setPalette(palette);
}

}  // namespace widgets
