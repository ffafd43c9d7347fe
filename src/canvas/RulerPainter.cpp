#include "canvas/RulerPainter.h"

#include <QPainter>
#include <cmath>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TabularText.h"

namespace canvas {

using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr double extentHeight = 3;
constexpr double labelTick = 12;
constexpr double middleTick = 6;
constexpr double shortTick = 3;
constexpr double labelGap = 4;
constexpr int ticksPerLabel = 10;

double tickLength(qint64 tick) {
  if (tick % ticksPerLabel == 0) return labelTick;
  return tick % (ticksPerLabel / 2) == 0 ? middleTick : shortTick;
}

}  // namespace

double RulerPainter::positionOf(double units) const {
  const double points = units * unit.pointsPerUnit;
  return orientation == Qt::Horizontal ? origin + points : origin - points;
}

void RulerPainter::paint(QPainter& painter, double length) const {
  const bool across = orientation == Qt::Horizontal;
  const QRectF strip(0, 0, across ? length : thickness, across ? thickness : length);
  const widgets::DevicePixels pixels(painter);
  pixels.fill(strip, TYStyleKit::colour(Token::CanvasRuler));
  if (unit.pointsPerUnit > 0) {
    paintExtent(painter);
    paintTicks(painter, length);
  }
  const QColor accent = TYStyleKit::colour(Token::Accent);
  if (pointer && across) pixels.vertical(*pointer, 0, thickness, accent);
  if (pointer && !across) pixels.horizontal(0, thickness, *pointer, accent);
  const QColor separator = TYStyleKit::colour(Token::Separator);
  const double edge = thickness - pixels.hairline();
  if (across)
    pixels.horizontal(0, length, edge, separator);
  else
    pixels.vertical(edge, 0, length, separator);
}

void RulerPainter::paintExtent(QPainter& painter) const {
  if (!extent) return;
  const double a = positionOf(extent->from);
  const double b = positionOf(extent->to);
  const double edge = thickness - extentHeight;
  const QRectF band = orientation == Qt::Horizontal
                          ? QRectF(QPointF(a, edge), QPointF(b, thickness))
                          : QRectF(QPointF(edge, b), QPointF(thickness, a));
  widgets::DevicePixels(painter).fill(band, TYStyleKit::colour(Token::Accent));
}

void RulerPainter::paintTicks(QPainter& painter, double length) const {
  const RulerScale scale = RulerScale::forUnit(unit);
  const double step = scale.tick * unit.pointsPerUnit;
  const bool across = orientation == Qt::Horizontal;
  const widgets::DevicePixels pixels(painter);
  const QColor color = TYStyleKit::colour(Token::Border);
  painter.setFont(TYStyleKit::font(widgets::TextStyle::Ruler));
  const double first = across ? -origin : origin - length;  // in points from the zero
  const auto begin = static_cast<qint64>(std::floor(first / step)) - ticksPerLabel;
  const auto end = static_cast<qint64>(std::ceil((first + length) / step));
  for (qint64 tick = begin; tick <= end; ++tick) {
    const double at = positionOf(static_cast<double>(tick) * scale.tick);
    const double from = thickness - tickLength(tick);
    if (across)
      pixels.vertical(at, from, thickness, color);
    else
      pixels.horizontal(from, thickness, at, color);
    if (tick % ticksPerLabel == 0)
      paintLabel(painter, at, length, static_cast<double>(tick) * scale.tick);
  }
}

void RulerPainter::paintLabel(QPainter& painter, double at, double length, double reading) const {
  QString text = QString::number(reading);
  text.replace(u'-', QChar(0x2212));
  const double width = widgets::TabularText::width(painter.font(), text);
  const bool across = orientation == Qt::Horizontal;
  // A number that does not fit whole is left out.
  const double start = across ? std::round(at) + labelGap : std::round(at) - labelGap;
  const double end = across ? start + width : start - width;
  if (across ? end > length : end < 0) return;
  painter.save();
  painter.setPen(TYStyleKit::colour(Token::Text2));
  if (!across) {
    painter.translate(0, start);
    painter.rotate(-90);
  }
  const QRectF box(across ? start : 0, 0, width, thickness - shortTick - 1);
  widgets::TabularText::draw(painter, box, Qt::AlignLeft | Qt::AlignVCenter, text);
  painter.restore();
}

}  // namespace canvas
