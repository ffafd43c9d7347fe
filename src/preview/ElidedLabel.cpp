#include "preview/ElidedLabel.h"

#include <QPainter>
#include <cmath>

namespace preview {

ElidedLabel::ElidedLabel(widgets::TextStyle style, widgets::Token token)
    : TokenLabel({}, style, token) {
  setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::sizeHint() const {
  // Rounded to the nearest the text might not fit, by a part of a unit.
  const double width = QFontMetricsF(font()).horizontalAdvance(text());
  return {static_cast<int>(std::ceil(width)), fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
  return {0, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

}  // namespace preview
