#pragma once

#include "timeline/TimelineScene.h"

class QPainter;

namespace timeline {

/// Paints the time ruler: seconds and frames, stop frames, the editor marker, the handle at the end
/// of the composition, and the corner above the titles.
class TimeRulerPainter {
 public:
  /// The painter works in pixels of the ruler, which begins with the corner.
  static void drawRuler(QPainter& painter, const TimelineScene& scene, const QRectF& exposed,
                        double width);

  // In pixels of the ruler right of the corner.
  [[nodiscard]] static QRectF stopFrameRect(const TYTimelineGeometry& geometry, double time);
  [[nodiscard]] static QRectF endHandleRect(const TYTimelineGeometry& geometry);
  static constexpr int widestLabel = 60;
  /// What the editor marker touches.
  [[nodiscard]] static QRectF markerRect(double x);
};

}  // namespace timeline
