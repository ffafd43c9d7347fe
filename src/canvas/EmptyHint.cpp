#include "canvas/EmptyHint.h"

#include <QCoreApplication>
#include <QPainter>
#include <cmath>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

using widgets::TextStyle;
using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr double paddingX = 34;
constexpr double paddingY = 22;
constexpr double glyphSide = 48;
constexpr double gap = 4;
constexpr double radius = 10;

}  // namespace

void EmptyHint::paint(QPainter& painter, const QRectF& area) {
  const QString title = QCoreApplication::translate("canvas", "Start with a component");
  const QString line = QCoreApplication::translate(
      "canvas", "Drag one from the library, or click Text in the toolbar.");
  const QFontMetricsF titleMetrics(TYStyleKit::font(TextStyle::SheetTitle));
  const QFontMetricsF lineMetrics(TYStyleKit::font(TextStyle::Body));
  const double width = std::ceil(lineMetrics.horizontalAdvance(line)) + 2 * paddingX;
  const double height =
      std::ceil(glyphSide + titleMetrics.height() + lineMetrics.height()) + 2 * gap + 2 * paddingY;
  if (area.width() < width || area.height() < height) return;
  QRectF box(0, 0, width, height);
  box.moveCenter(area.center());
  painter.save();
  widgets::DevicePixels(painter).box(box, TYStyleKit::colour(Token::Panel),
                                     TYStyleKit::colour(Token::Border), radius);
  const QRectF glyph(box.center().x() - glyphSide / 2, box.top() + paddingY, glyphSide, glyphSide);
  widgets::TYGlyph::paint(painter, QStringLiteral("Component"), glyph,
                          TYStyleKit::colour(Token::Text2));
  QRectF row(box.left(), glyph.bottom() + gap, width, titleMetrics.height());
  painter.setFont(TYStyleKit::font(TextStyle::SheetTitle));
  painter.setPen(TYStyleKit::colour(Token::Text));
  painter.drawText(row, Qt::AlignCenter, title);
  row = QRectF(box.left(), row.bottom() + gap, width, lineMetrics.height());
  painter.setFont(TYStyleKit::font(TextStyle::Body));
  painter.drawText(row, Qt::AlignCenter, line);
  painter.restore();
}

}  // namespace canvas
