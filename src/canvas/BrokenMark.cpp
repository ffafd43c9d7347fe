#include "canvas/BrokenMark.h"

#include <QPainter>
#include <QTextOption>
#include <algorithm>

#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr double hatchDistance = 8;
constexpr double hatchWidth = 3;
constexpr double glyphSide = 16;
constexpr double gap = 8;
constexpr double leastWidthForText = 60;

void paintHatch(QPainter& painter, const QRectF& place) {
  painter.fillRect(place, TYStyleKit::colour(Token::BrokenSoft));
  QColor color = TYStyleKit::colour(Token::Broken);
  color.setAlphaF(0.3F);
  painter.setPen(QPen(color, hatchWidth, Qt::SolidLine, Qt::FlatCap));
  const double slant = place.height();
  const double step = hatchDistance * 1.41421356;
  for (double x = place.left() - slant; x < place.right(); x += step)
    painter.drawLine(QPointF(x, place.bottom()), QPointF(x + slant, place.top()));
}

void paintEdge(QPainter& painter, const QRectF& place) {
  QPen pen(TYStyleKit::colour(Token::Broken), 1);
  pen.setDashPattern({5, 3});
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(place.adjusted(0.5, 0.5, -0.5, -0.5));
}

void paintGlyph(QPainter& painter, const QPointF& corner) {
  widgets::TYGlyph::paint(painter, QStringLiteral("Broken"),
                          QRectF(corner, QSizeF(glyphSide, glyphSide)),
                          TYStyleKit::colour(Token::Broken));
  painter.setPen(TYStyleKit::colour(Token::Text));
}

/// Glyph and text in one line; the text may be empty.
void paintBeside(QPainter& painter, const QRectF& place, const QString& text) {
  const double advance = QFontMetricsF(painter.font()).horizontalAdvance(text);
  const double width = glyphSide + (text.isEmpty() ? 0 : gap + advance);
  const double left = place.center().x() - width / 2;
  paintGlyph(painter, {left, place.center().y() - glyphSide / 2});
  painter.drawText(QRectF(left + glyphSide + gap, place.top(), advance + 1, place.height()),
                   Qt::AlignVCenter | Qt::TextSingleLine, text);
}

void paintBelow(QPainter& painter, const QRectF& place, const QString& text) {
  QTextOption wrapped(Qt::AlignHCenter | Qt::AlignTop);
  wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  QRectF lines(place.left() + gap, 0, place.width() - 2 * gap,
               place.height() - glyphSide - 2 * gap);
  lines.setHeight(std::min(lines.height(), painter.boundingRect(lines, text, wrapped).height()));
  const double top = place.center().y() - (glyphSide + gap / 2 + lines.height()) / 2;
  paintGlyph(painter, {place.center().x() - glyphSide / 2, top});
  lines.moveTop(top + glyphSide + gap / 2);
  painter.drawText(lines, text, wrapped);
}

}  // namespace

QString BrokenMark::text() const {
  return reason.isEmpty() ? name : name + QStringLiteral(" ") + reason;
}

void BrokenMark::paint(QPainter& painter, const QRectF& place) const {
  painter.save();
  painter.translate(place.center());
  painter.rotate(-degrees);
  painter.translate(-place.center());
  painter.setClipRect(place, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  paintHatch(painter, place);
  paintEdge(painter, place);
  painter.setFont(TYStyleKit::font(widgets::TextStyle::Body));
  const QFontMetricsF metrics(painter.font());
  const double room = place.width() - glyphSide - 3 * gap;
  if (metrics.horizontalAdvance(text()) <= room)
    paintBeside(painter, place, text());
  else if (place.width() >= leastWidthForText + 2 * gap &&
           place.height() >= glyphSide + 3 * metrics.lineSpacing() + 2 * gap)
    paintBelow(painter, place, text());
  else if (room >= leastWidthForText && place.height() >= metrics.height())
    paintBeside(painter, place, metrics.elidedText(text(), Qt::ElideRight, room));
  else
    paintBeside(painter, place, {});
  painter.restore();
}

}  // namespace canvas
