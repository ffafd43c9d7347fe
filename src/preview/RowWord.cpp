#include "preview/ScaleButton.h"

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

ScaleButton::ScaleButton(QWidget* parent) : QAbstractButton(parent) {
  setFont(TYStyleKit::font(widgets::TextStyle::Small));
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_Hover);
  setToolTip(tr("Zoom (0, 1, 2)"));
  setAccessibleName(tr("Zoom"));
  hide();
}

QSize ScaleButton::sizeHint() const {
  return {fontMetrics().horizontalAdvance(text()) + 2 * padding, buttonHeight};
}

void ScaleButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool isHot = underMouse() || isDown();
  if (isHot)
    widgets::DevicePixels(painter).fill(
        rect(), TYStyleKit::colour(isDown() ? Token::ControlPressed : Token::ControlHover), radius);
  painter.setFont(font());
  painter.setPen(TYStyleKit::colour(isHot ? Token::Text : Token::Text3));
  painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace preview
