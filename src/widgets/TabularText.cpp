#include "widgets/TabularText.h"

#include <QPainter>

namespace widgets {
namespace {

double advance(const QFontMetricsF& metrics, QChar c) {
  return c.isDigit() ? metrics.horizontalAdvance(QLatin1Char('0')) : metrics.horizontalAdvance(c);
}

double sum(const QFontMetricsF& metrics, const QString& text) {
  double width = 0;
  for (const QChar c : text) width += advance(metrics, c);
  return width;
}

}  // namespace

double TabularText::width(const QFont& font, const QString& text) {
  return sum(QFontMetricsF(font), text);
}

void TabularText::draw(QPainter& painter, const QRectF& rect, Qt::Alignment alignment,
                       const QString& text) {
  const QFontMetricsF metrics(painter.font(), painter.device());
  const double width = sum(metrics, text);
  double x = rect.left();
  if (alignment & Qt::AlignHCenter) x += (rect.width() - width) / 2;
  if (alignment & Qt::AlignRight) x = rect.right() - width;
  double top = rect.top();
  if (alignment & Qt::AlignVCenter) top += (rect.height() - metrics.height()) / 2;
  if (alignment & Qt::AlignBottom) top = rect.bottom() - metrics.height();
  const double baseline = top + metrics.ascent();
  for (const QChar c : text) {
    const double cell = advance(metrics, c);
    const double inset = (cell - metrics.horizontalAdvance(c)) / 2;
    painter.drawText(QPointF(x + inset, baseline), QString(c));
    x += cell;
  }
}

}  // namespace widgets
