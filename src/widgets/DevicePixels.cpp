#include "widgets/DevicePixels.h"

#include <QPainter>
#include <cmath>

namespace widgets {

DevicePixels::DevicePixels(QPainter& painter)
    : m_painter(painter), m_scale(std::max(0.01, std::abs(painter.deviceTransform().m11()))) {}

QRectF DevicePixels::snapped(const QRectF& rect) const {
  const QTransform device = m_painter.deviceTransform();
  const auto toGrid = [](QPointF p) { return QPointF(std::round(p.x()), std::round(p.y())); };
  const QTransform back = device.inverted();
  return {back.map(toGrid(device.map(rect.topLeft()))),
          back.map(toGrid(device.map(rect.bottomRight())))};
}

void DevicePixels::fill(const QRectF& rect, const QColor& colour, double radius) const {
  if (colour.alpha() == 0) return;
  if (radius <= 0) {
    m_painter.fillRect(snapped(rect), colour);
    return;
  }
  m_painter.save();
  m_painter.setRenderHint(QPainter::Antialiasing);
  m_painter.setPen(Qt::NoPen);
  m_painter.setBrush(colour);
  m_painter.drawRoundedRect(snapped(rect), radius, radius);
  m_painter.restore();
}

void DevicePixels::edge(const QRectF& rect, const QColor& colour, double radius,
                        double width) const {
  const double half = width * hairline() / 2;
  const QRectF middle = snapped(rect).adjusted(half, half, -half, -half);
  if (colour.alpha() == 0 || middle.isEmpty()) return;
  m_painter.save();
  m_painter.setRenderHint(QPainter::Antialiasing, radius > 0);
  QPen pen(colour, width * hairline());
  pen.setJoinStyle(Qt::MiterJoin);
  m_painter.setPen(pen);
  m_painter.setBrush(Qt::NoBrush);
  if (radius > 0) {
    const double inner = std::max(0.0, radius - half);
    m_painter.drawRoundedRect(middle, inner, inner);
  } else {
    const double line = width * hairline();
    const QRectF outer = snapped(rect);
    m_painter.fillRect(QRectF(outer.left(), outer.top(), outer.width(), line), colour);
    m_painter.fillRect(QRectF(outer.left(), outer.bottom() - line, outer.width(), line), colour);
    m_painter.fillRect(QRectF(outer.left(), outer.top() + line, line, outer.height() - 2 * line),
                       colour);
    m_painter.fillRect(
        QRectF(outer.right() - line, outer.top() + line, line, outer.height() - 2 * line), colour);
  }
  m_painter.restore();
}

void DevicePixels::box(const QRectF& rect, const QColor& fillColour, const QColor& edgeColour,
                       double radius) const {
  // The fill stays inside the edge, or it would shine through the rounded corners.
  const double half = hairline() / 2;
  if (fillColour.alpha() != 0) {
    m_painter.save();
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(fillColour);
    m_painter.drawRoundedRect(snapped(rect).adjusted(half, half, -half, -half), radius, radius);
    m_painter.restore();
  }
  edge(rect, edgeColour, radius);
}

void DevicePixels::horizontal(double x1, double x2, double y, const QColor& colour) const {
  const QRectF line = snapped(QRectF(x1, y, x2 - x1, 1));
  m_painter.fillRect(QRectF(line.left(), line.top(), line.width(), hairline()), colour);
}

void DevicePixels::vertical(double x, double y1, double y2, const QColor& colour) const {
  const QRectF line = snapped(QRectF(x, y1, 1, y2 - y1));
  m_painter.fillRect(QRectF(line.left(), line.top(), hairline(), line.height()), colour);
}

QRegion roundedRegion(const QRect& rect, int radius) {
  QRegion region(rect.adjusted(0, radius, 0, -radius));
  for (int row = 0; row < radius; ++row) {
    const double rise = radius - row - 0.5;
    const int inset = int(radius - std::sqrt(radius * radius - rise * rise));
    region += QRect(rect.left() + inset, rect.top() + row, rect.width() - 2 * inset, 1);
    region += QRect(rect.left() + inset, rect.bottom() - row, rect.width() - 2 * inset, 1);
  }
  return region;
}

}  // namespace widgets
