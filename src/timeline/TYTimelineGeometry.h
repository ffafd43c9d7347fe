#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <functional>

#include "foundation/Timecode.h"

namespace model {
class Composition;
}

namespace timeline {

/// The measures that were chosen for the timeline, in logical pixels.
struct TimelineMeasures {
  static constexpr double componentsWidth = 236;  ///< of the title column
  static constexpr double narrowComponentsWidth = 184;
  static constexpr double componentHeight = 24;  ///< of a row
  static constexpr double componentIndent1 = 22;
  static constexpr double componentIndent2 = 10;
  static constexpr double barInset = 2;
  static constexpr double barEdge = 5;  ///< of a bar's ends, where its edges are grabbed
  static constexpr QSizeF markerSize{11, 9};
  static constexpr QSizeF stopFrameSize{10, 8};
  static constexpr QSizeF keyframeSize{10, 10};
};

/// Where times and rows of the timeline lie. Lengths are logical pixels, times seconds, y grows
/// downwards. Two spaces: the row area as a whole, whose origin is the top of the first row, and
/// what is seen of it right of the title column, where the time ruler stands too.
class TYTimelineGeometry {
 public:
  enum class Space { Rows, Ruler };
  static constexpr double xOffset = 3;       ///< of time 0
  static constexpr double tickHeight = 2.5;  ///< of the marks of frames
  static constexpr double unitHeight = 9;    ///< of the marks of seconds
  static constexpr double rulerThickness = unitHeight + TimelineMeasures::markerSize.height() + 4;
  static constexpr double spaceBehindEnd = 50;

  /// What the geometry needs to know of a composition.
  struct Content {
    double duration = 5;
    double editorTimepoint = 0;
    quint64 ticksPerSecond = 25;
    foundation::TimecodeRate rate = foundation::TimecodeRate::whole(25);
    int rows = 0;
  };
  [[nodiscard]] static foundation::TimecodeRate rateOf(const model::Composition& composition);

  /// From 0 to 1, as the zoom slider has it; below 0 where the duration needs it to be seen whole.
  [[nodiscard]] double zoom() const { return m_zoom; }
  void setZoom(double zoom) { m_zoom = qBound(m_leastZoom, zoom, 1.0); }
  [[nodiscard]] double leastZoom() const { return m_leastZoom; }
  /// Lets the zoom go down to where the whole duration has room in this width. The zoom itself
  /// stays.
  void setVisibleWidth(double width);
  /// The zoom at which a second has this width; at most 1.
  [[nodiscard]] static double zoomForUnitWidth(double width);
  [[nodiscard]] QPointF visibleOrigin() const { return m_visible; }
  void setVisibleOrigin(const QPointF& origin) { m_visible = origin; }
  [[nodiscard]] const Content& content() const { return m_content; }
  void setContent(const Content& content) { m_content = content; }

  // Times
  /// The width of a second: 25 to 300 for zooms from 0 to 1, and less by a factor below.
  [[nodiscard]] double unitWidth() const;
  [[nodiscard]] double xPositionAtTime(double time) const { return unitWidth() * time; }
  /// On a whole pixel.
  [[nodiscard]] double xPosition(double x, Space space) const;
  [[nodiscard]] double xPositionAtTime(double time, Space space) const {
    return xPosition(xPositionAtTime(time), space);
  }
  [[nodiscard]] double positionOfEditorTimeInRuler(Space space) const {
    return xPositionAtTime(m_content.editorTimepoint, space);
  }
  /// Whole frames of the time code, with the distance's sign; a frame that is not complete does not
  /// count.
  [[nodiscard]] double timeFromPosition(double x) const;
  /// The frame that a place lies in.
  [[nodiscard]] double timeFromPosition(double x, Space space) const {
    return timeFromPosition(x - xPositionAtTime(0, space));
  }
  /// Seconds in full precision, for what is not bound to frames.
  [[nodiscard]] double secondsAt(double x, Space space) const;

  // Rows
  [[nodiscard]] QSizeF timeAxisSize() const;
  /// The top of the first row in a view that shows rows below its own upper edge.
  [[nodiscard]] double componentYOriginInView(const QRectF& view) const {
    return view.top() - m_visible.y();
  }
  [[nodiscard]] int componentRowForPoint(const QPointF& point, const QRectF& view) const;
  /// The bar of a component that is shown in the row, as high as the row.
  [[nodiscard]] QRectF componentRectForRow(double startTime, double duration, int row) const;
  /// The whole row, as wide as the view.
  [[nodiscard]] static QRectF rectForRow(int row, double viewWidth);
  /// The diamond of a key frame in the row.
  [[nodiscard]] QRectF keyFrameRect(double time, int row) const;

  // Ticks
  /// Every how manieth frame has a mark, so that marks do not touch. Grows by one for every
  /// doubling of their distance.
  [[nodiscard]] int tickStride() const;
  /// Every how manieth second has a mark. More than 1 only below the zoom of 0, where frames have
  /// none.
  [[nodiscard]] int secondStride() const;
  /// Called with the x of a mark; those of seconds carry the second, others -1.
  using TickBlock = std::function<void(double x, int second)>;
  /// From time 0 to the last whole second; only marks between the two x are visited.
  void enumerateTicks(Space space, double fromX, double toX, const TickBlock& block) const;

 private:
  double m_zoom = 0.38;
  double m_leastZoom = 0;
  QPointF m_visible;
  Content m_content;
};

}  // namespace timeline
