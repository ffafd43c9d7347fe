#pragma once

#include <QLabel>

#include "widgets/TYStyleKit.h"

namespace widgets {

/// A label in a colour of the theme, which it follows.
class TokenLabel : public QLabel {
  Q_OBJECT
 public:
  TokenLabel(const QString& text, TextStyle style, Token token, QWidget* parent = nullptr);

 private:
  void takeColour();

  Token m_token;
};

}  // namespace widgets
