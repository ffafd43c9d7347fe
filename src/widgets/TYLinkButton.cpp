#include "widgets/TYLinkButton.h"

#include <QPainter>

#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {
constexpr int padding = 4;
constexpr int buttonHeight = 20;
}  // namespace

TYLinkButton::TYLinkButton(const QString& text, QWidget* parent) : QAbstractButton(parent) {
  setText(text);
  setFont(TYStyleKit::font(TextStyle::Medium));
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
}

QSize TYLinkButton::sizeHint() const {
  return {fontMetrics().horizontalAdvance(text()) + 2 * padding, buttonHeight};
}

void TYLinkButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QFont face = font();
  face.setUnderline(underMouse() || hasFocus());
  painter.setFont(face);
  painter.setPen(TYStyleKit::colour(isEnabled() ? Token::Accent : Token::TextDisabled));
  painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace widgets
