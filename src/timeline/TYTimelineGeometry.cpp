#include "timeline/TYTimelineGeometry.h"

#include <cmath>

#include "model/Composition.h"

namespace timeline {

using foundation::Timecode;
using Measures = TimelineMeasures;

namespace {

constexpr double zoomRange = 275;
constexpr double leastUnitWidth = 25;
constexpr double leastWidthAtAll = 1e-3;
constexpr double leastDuration = 1e-3;  // s
constexpr double leastTickDistance = 5;
constexpr double leastLabelDistance = 40;
/// Of a frame: times that stand on a frame may lie a little before it in floating point.
constexpr double tolerance = 1e-6;

}  // namespace

foundation::TimecodeRate TYTimelineGeometry::rateOf(const model::Composition& composition) {
  return composition.videoResolution().timecodeRate();
}

double TYTimelineGeometry::zoomForUnitWidth(double width) {
  if (width >= leastUnitWidth) return std::min((width - leastUnitWidth) / zoomRange, 1.0);
  return std::log(std::max(width, leastWidthAtAll) / leastUnitWidth) * leastUnitWidth / zoomRange;
}

double TYTimelineGeometry::unitWidth() const {
  if (m_zoom >= 0) return m_zoom * zoomRange + leastUnitWidth;
  // Goes on as steep as it comes from above, and never reaches nothing.
  return leastUnitWidth * std::exp(m_zoom * zoomRange / leastUnitWidth);
}

void TYTimelineGeometry::setVisibleWidth(double width) {
  const double needed = (width - spaceBehindEnd) / std::max(m_content.duration, leastDuration);
  m_leastZoom = std::min(0.0, zoomForUnitWidth(needed));
}

double TYTimelineGeometry::xPosition(double x, Space space) const {
  return std::round(xOffset + x - (space == Space::Ruler ? m_visible.x() : 0));
}

double TYTimelineGeometry::timeFromPosition(double x) const {
  const double frames = std::abs(x) / unitWidth() * m_content.rate.framesPerSecond();
  const Timecode whole(static_cast<qint64>(std::floor(frames + tolerance)), m_content.rate);
  return std::copysign(whole.seconds(), x);
}

double TYTimelineGeometry::secondsAt(double x, Space space) const {
  return (x - xOffset + (space == Space::Ruler ? m_visible.x() : 0)) / unitWidth();
}

QSizeF TYTimelineGeometry::timeAxisSize() const {
  return {m_content.duration * unitWidth() + spaceBehindEnd,
          Measures::componentHeight * m_content.rows};
}

int TYTimelineGeometry::componentRowForPoint(const QPointF& point, const QRectF& view) const {
  return static_cast<int>((point.y() - componentYOriginInView(view)) / Measures::componentHeight);
}

QRectF TYTimelineGeometry::componentRectForRow(double startTime, double duration, int row) const {
  const double left = xPositionAtTime(startTime, Space::Rows);
  const double right = xPositionAtTime(startTime + duration, Space::Rows);
  return {left, Measures::componentHeight * row, right - left, Measures::componentHeight};
}

QRectF TYTimelineGeometry::rectForRow(int row, double viewWidth) {
  return {0, Measures::componentHeight * row, viewWidth, Measures::componentHeight};
}

QRectF TYTimelineGeometry::keyFrameRect(double time, int row) const {
  const QSizeF size = Measures::keyframeSize;
  const QPointF centre(xPositionAtTime(time, Space::Rows) + 0.5,
                       (row + 0.5) * Measures::componentHeight);
  return {centre.x() - size.width() / 2, centre.y() - size.height() / 2, size.width(),
          size.height()};
}

int TYTimelineGeometry::tickStride() const {
  int stride = 1;
  double distance =
      unitWidth() / static_cast<double>(std::max<quint64>(m_content.ticksPerSecond, 1));
  for (; distance < leastTickDistance; distance *= 2) ++stride;
  return stride;
}

int TYTimelineGeometry::secondStride() const {
  if (unitWidth() >= leastUnitWidth) return 1;
  int stride = 1;
  for (const int next : {2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600}) {
    if (stride * unitWidth() >= leastLabelDistance) return stride;
    stride = next;
  }
  while (stride * unitWidth() < leastLabelDistance) stride *= 2;
  return stride;
}

void TYTimelineGeometry::enumerateTicks(Space space, double fromX, double toX,
                                        const TickBlock& block) const {
  const int last = static_cast<int>(m_content.duration);
  const int ticks = static_cast<int>(std::max<quint64>(m_content.ticksPerSecond, 1));
  const int stride = tickStride();
  const double distance = unitWidth() / ticks;
  const double zero = xPosition(0, space);
  const int seconds = secondStride();
  const int first = std::max(0, static_cast<int>((fromX - zero) / unitWidth()) - 1);
  for (int second = first - first % seconds; second <= last; second += seconds) {
    const double x = zero + second * unitWidth();
    if (x > toX) return;
    block(x, second);
    if (unitWidth() < leastUnitWidth) continue;
    for (int tick = stride; tick < ticks && second < last; tick += stride)
      block(x + tick * distance, -1);
  }
}

}  // namespace timeline
