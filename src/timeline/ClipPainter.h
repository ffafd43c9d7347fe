#pragma once

#include "timeline/GroundStrips.h"
#include "timeline/RowPainter.h"

namespace timeline {

/// Paints what the window onto the rows shows: grounds, grid, rows, the end of the composition,
/// stop frames, what is being dragged, and the editor marker on top. Only the rows that the exposed
/// part touches are looked at.
class ClipPainter {
 public:
  /// The painter works in pixels of the window, `view` is its size.
  void drawClip(QPainter& painter, const TimelineScene& scene, const QRectF& exposed,
                const QSizeF& view);
  [[nodiscard]] RowPainter& rowPainter() { return m_rows; }
  /// The pixels of the window that the editor marker touches.
  [[nodiscard]] static QRect markerStrip(int x, int height);

 private:
  void drawGrounds(QPainter& painter, const TimelineScene& scene, int first, int last,
                   const QRectF& seen) const;
  void drawComponents(QPainter& painter, const TimelineScene& scene, int first, int last,
                      const QRectF& seen);

  RowPainter m_rows;
  GroundStrips m_grounds;
};

}  // namespace timeline
