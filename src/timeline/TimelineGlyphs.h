#pragma once

#include <QColor>
#include <QHash>
#include <QPixmap>
#include <QRectF>

class QPainter;

namespace timeline {

/// The marks of the timeline. Places are logical pixels, y down.
class TimelineGlyphs {
 public:
  enum class VerticalLine { No, Yes };

  /// The point below, the base above it; the line goes on from the point to the bottom.
  static void drawTriangleAtPoint(QPainter& painter, const QPointF& point, const QSizeF& size,
                                  const QColor& color, VerticalLine line = VerticalLine::No,
                                  double bottom = 0);
  /// Around the point's pixel; no stroke with an invalid colour.
  static void drawDiamondAtPoint(QPainter& painter, const QPointF& centre, const QSizeF& size,
                                 const QColor& fillColor, const QColor& strokeColor = QColor());
  /// The line of the editor time with its halo, in the pixel that begins at x.
  static void drawMarkerAtPosition(QPainter& painter, double x, const QColor& color,
                                   const QColor& halo, const QRectF& bounds);
  static constexpr double markerHalo = 1;  ///< to each side of the line
};

/// Diamonds of a few colours, drawn once and then copied.
class DiamondStamps {
 public:
  void draw(QPainter& painter, const QPointF& centre, const QSizeF& size, const QColor& fillColor,
            const QColor& strokeColor = QColor());
  void clear() { m_stamps.clear(); }

 private:
  QHash<quint64, QPixmap> m_stamps;
  double m_scale = 0;
};

}  // namespace timeline
