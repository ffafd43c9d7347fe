#include "timeline/TimelineGlyphs.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "widgets/DevicePixels.h"

namespace timeline {

void TimelineGlyphs::drawTriangleAtPoint(QPainter& painter, const QPointF& point,
                                         const QSizeF& size, const QColor& color, VerticalLine line,
                                         double bottom) {
  const double centre = point.x() + 0.5;
  QPainterPath path(QPointF(centre - size.width() / 2, point.y() - size.height()));
  path.lineTo(centre + size.width() / 2, point.y() - size.height());
  path.lineTo(centre, point.y());
  path.closeSubpath();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(path, color);
  painter.restore();
  if (line == VerticalLine::Yes && bottom > point.y())
    widgets::DevicePixels(painter).vertical(point.x(), point.y(), bottom, color);
}

void TimelineGlyphs::drawDiamondAtPoint(QPainter& painter, const QPointF& centre,
                                        const QSizeF& size, const QColor& fillColor,
                                        const QColor& strokeColor) {
  QPainterPath path(QPointF(centre.x(), centre.y() - size.height() / 2));
  path.lineTo(centre.x() - size.width() / 2, centre.y());
  path.lineTo(centre.x(), centre.y() + size.height() / 2);
  path.lineTo(centre.x() + size.width() / 2, centre.y());
  path.closeSubpath();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(strokeColor.isValid() ? QPen(strokeColor, 1) : QPen(Qt::NoPen));
  painter.setBrush(fillColor);
  painter.drawPath(path);
  painter.restore();
}

void TimelineGlyphs::drawMarkerAtPosition(QPainter& painter, double x, const QColor& color,
                                          const QColor& halo, const QRectF& bounds) {
  painter.fillRect(QRectF(x - markerHalo, bounds.top(), 1 + 2 * markerHalo, bounds.height()), halo);
  painter.fillRect(QRectF(x, bounds.top(), 1, bounds.height()), color);
}

void DiamondStamps::draw(QPainter& painter, const QPointF& centre, const QSizeF& size,
                         const QColor& fillColor, const QColor& strokeColor) {
  const QTransform device = painter.deviceTransform();
  const double scale = std::max(0.01, std::abs(device.m11()));
  if (scale != m_scale) m_stamps.clear();
  m_scale = scale;
  const quint64 key = (quint64{fillColor.rgba()} << 32U) |
                      (strokeColor.isValid() ? quint64{strokeColor.rgba()} : 0);
  const double margin = 2;
  const QSizeF box(size.width() + 2 * margin, size.height() + 2 * margin);
  auto found = m_stamps.find(key);
  if (found == m_stamps.end()) {
    QPixmap stamp((box * scale).toSize());
    stamp.setDevicePixelRatio(scale);
    stamp.fill(Qt::transparent);
    QPainter onStamp(&stamp);
    TimelineGlyphs::drawDiamondAtPoint(onStamp, {box.width() / 2, box.height() / 2}, size,
                                       fillColor, strokeColor);
    onStamp.end();
    found = m_stamps.insert(key, stamp);
  }
  // On whole device pixels, so that copying changes nothing.
  const QPointF corner = device.map(centre - QPointF(box.width(), box.height()) / 2);
  painter.drawPixmap(device.inverted().map(QPointF(std::round(corner.x()), std::round(corner.y()))),
                     *found);
}

}  // namespace timeline
