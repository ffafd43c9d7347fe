#pragma once

#include <QWidget>

#include "widgets/ThemeTokens.h"

namespace widgets {

/// A glyph of a fixed size, in a colour of the theme.
class GlyphView : public QWidget {
  Q_OBJECT
 public:
  GlyphView(QString glyph, int side, Token token, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString m_glyph;
  Token m_token;
};

}  // namespace widgets
