#pragma once

#include <QColor>
#include <QPainterPath>
#include <QRectF>
#include <QRegion>

class QPainter;

namespace widgets {

/// Draws on whole device pixels at any scale factor, so that lines stay sharp at 125 or 150 %.
/// All lengths in and out are logical units of the painter, which must not be rotated.
class DevicePixels {
 public:
  explicit DevicePixels(QPainter& painter);

  /// The width of one device pixel.
  [[nodiscard]] double hairline() const { return 1 / m_scale; }
  /// The rectangle with its edges moved to the nearest boundaries between device pixels.
  [[nodiscard]] QRectF snapped(const QRectF& rect) const;

  /// Fills the snapped rectangle.
  void fill(const QRectF& rect, const QColor& colour, double radius = 0) const;
  /// Draws an edge of that many device pixels inside the snapped rectangle.
  void edge(const QRectF& rect, const QColor& colour, double radius = 0, double width = 1) const;
  /// Fill and edge of one device pixel.
  void box(const QRectF& rect, const QColor& fill, const QColor& edge, double radius) const;
  /// A line of one device pixel along the top (left) of the given one.
  void horizontal(double x1, double x2, double y, const QColor& colour) const;
  void vertical(double x, double y1, double y2, const QColor& colour) const;

 private:
  QPainter& m_painter;
  double m_scale;
};

/// All but the corners of a rounded rectangle: the shape of a pop-up where no compositor makes its
/// corners transparent.
[[nodiscard]] QRegion roundedRegion(const QRect& rect, int radius);

}  // namespace widgets
