#include "preview/RowWord.h"

#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace preview {

using widgets::Token;
using widgets::TYStyleKit;

namespace {
constexpr int padding = 6;
constexpr int buttonHeight = 24;
constexpr int radius = 4;
}  // namespace

RowWord::RowWord(Token token, QWidget* parent) : QAbstractButton(parent), m_token(token) {
  setFont(TYStyleKit::font(widgets::TextStyle::Small));
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  hide();
}

QSize RowWord::sizeHint() const {
  return {fontMetrics().horizontalAdvance(text()) + 2 * padding, buttonHeight};
}

void RowWord::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool isHot = underMouse() || isDown();
  if (isHot)
    widgets::DevicePixels(painter).fill(
        rect(), TYStyleKit::colour(isDown() ? Token::ControlPressed : Token::ControlHover), radius);
  painter.setFont(font());
  painter.setPen(TYStyleKit::colour(isHot ? Token::Text : m_token));
  painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace preview
