#include "canvas/BrokenMark.h"

#include <QPainter>

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
  const bool hasText = room >= leastWidthForText && place.height() >= metrics.height();
  const QString line = hasText ? metrics.elidedText(text(), Qt::ElideRight, room) : QString();
  const double width = glyphSide + (hasText ? gap + metrics.horizontalAdvance(line) : 0);
  const double left = place.center().x() - width / 2;
  const QRectF glyph(left, place.center().y() - glyphSide / 2, glyphSide, glyphSide);
  widgets::TYGlyph::paint(painter, QStringLiteral("Broken"), glyph,
                          TYStyleKit::colour(Token::Broken));
  painter.setPen(TYStyleKit::colour(Token::Text));
  painter.drawText(QRectF(glyph.right() + gap, place.top(), room + gap, place.height()),
                   Qt::AlignVCenter | Qt::TextSingleLine, line);
  painter.restore();
}

}  // namespace canvas
