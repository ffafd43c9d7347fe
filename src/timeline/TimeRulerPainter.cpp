#include "timeline/TimeRulerPainter.h"

#include <QCoreApplication>
#include <QPainter>
#include <cmath>

#include "model/Composition.h"
#include "timeline/TimelineGlyphs.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TabularText.h"

namespace timeline {

using widgets::DevicePixels;
using widgets::TextStyle;
using widgets::Token;
using widgets::TYStyleKit;
using Geometry = TYTimelineGeometry;
using Measures = TimelineMeasures;
using Space = Geometry::Space;

namespace {

constexpr double thickness = Geometry::rulerThickness;
constexpr double labelGap = 4;
constexpr double titleIndent = 12;
constexpr double handleWidth = 7;
constexpr double handleHeight = 8;

void drawTimelineRuler(QPainter& painter, const TimelineScene& scene, double from, double to) {
  const DevicePixels pixels(painter);
  const QColor marks = TYStyleKit::colour(Token::Border);
  painter.setFont(TYStyleKit::font(TextStyle::Ruler));
  painter.setPen(TYStyleKit::colour(Token::Text2));
  const double bottom = thickness - 1;
  const double ascent = QFontMetricsF(painter.font()).ascent();
  // The label's baseline stands a little above the lower end of the marks.
  const double top = thickness - Geometry::tickHeight - 2.5 - ascent;
  const double marker = scene.geometry.positionOfEditorTimeInRuler(Space::Ruler);
  scene.geometry.enumerateTicks(
      Space::Ruler, from - TimeRulerPainter::widestLabel, to, [&](double position, int second) {
        const double x = std::round(position);
        pixels.vertical(x, bottom - (second >= 0 ? Geometry::unitHeight : Geometry::tickHeight),
                        bottom, marks);
        if (second < 0) return;
        // Aside of the marker while that stands on the second, as it does at the beginning.
        const bool isCovered = x == marker && !scene.composition->playMode();
        const double gap = isCovered ? Measures::markerSize.width() / 2 + 3 : labelGap;
        widgets::TabularText::draw(painter,
                                   {x + gap, top, TimeRulerPainter::widestLabel, thickness},
                                   Qt::AlignLeft | Qt::AlignTop, QString::number(second));
      });
}

void drawStopframes(QPainter& painter, const TimelineScene& scene) {
  for (const double time : scene.composition->stopFrameTimepoints()) {
    const QRectF rect = TimeRulerPainter::stopFrameRect(scene.geometry, time);
    TimelineGlyphs::drawTriangleAtPoint(painter, {rect.center().x() - 0.5, rect.bottom()},
                                        Measures::stopFrameSize,
                                        TYStyleKit::colour(Token::StopFrame));
    if (scene.hasFocus && scene.currentRow < 0 && scene.currentTime == time)
      DevicePixels(painter).edge(rect.adjusted(-3, -1, 3, 3), TYStyleKit::colour(Token::Accent), 3,
                                 2);
  }
}

void drawEndHandle(QPainter& painter, const TimelineScene& scene) {
  const QRectF rect = TimeRulerPainter::endHandleRect(scene.geometry);
  const DevicePixels pixels(painter);
  pixels.fill(rect, TYStyleKit::colour(Token::Border), 1.5);
  const QColor grip = TYStyleKit::colour(Token::TimelineRuler);
  for (const double x : {2, 4})
    pixels.vertical(rect.left() + x, rect.top() + 2, rect.bottom() - 2, grip);
}

void drawMarker(QPainter& painter, const TimelineScene& scene) {
  const QPointF point(scene.geometry.positionOfEditorTimeInRuler(Space::Ruler), thickness);
  // A rim in the ground's colour keeps it apart from the marks that it covers.
  const QSizeF size = Measures::markerSize;
  TimelineGlyphs::drawTriangleAtPoint(painter, point, {size.width() + 3, size.height() + 1},
                                      TYStyleKit::colour(Token::TimelineRuler));
  TimelineGlyphs::drawTriangleAtPoint(painter, point, size, TYStyleKit::colour(Token::Marker),
                                      TimelineGlyphs::VerticalLine::Yes, thickness);
}

void drawCorner(QPainter& painter, const TimelineScene& scene) {
  const QRectF corner(0, 0, scene.componentsWidth, thickness);
  painter.fillRect(corner, TYStyleKit::colour(Token::TimelineRowAlt));
  painter.setFont(TYStyleKit::font(TextStyle::Small));
  painter.setPen(TYStyleKit::colour(Token::Text2));
  painter.drawText(corner.adjusted(titleIndent, 0, 0, -1), Qt::AlignLeft | Qt::AlignVCenter,
                   QCoreApplication::translate("timeline", "Stop frames"));
  DevicePixels(painter).vertical(corner.right() - 1, 0, thickness,
                                 TYStyleKit::colour(Token::Separator));
}

}  // namespace

QRectF TimeRulerPainter::stopFrameRect(const Geometry& geometry, double time) {
  const QSizeF size = Measures::stopFrameSize;
  const double x = geometry.xPositionAtTime(time, Space::Ruler) + 0.5;
  return {x - size.width() / 2, 1, size.width(), size.height()};
}

QRectF TimeRulerPainter::endHandleRect(const Geometry& geometry) {
  const double x = geometry.xPositionAtTime(geometry.content().duration, Space::Ruler) + 1;
  return {x, 1, handleWidth, handleHeight};
}

QRectF TimeRulerPainter::markerRect(double x) {
  const double reach = Measures::markerSize.width() / 2 + 2;
  return {std::floor(x + 0.5 - reach), 0, std::ceil(2 * reach) + 1, thickness};
}

void TimeRulerPainter::drawRuler(QPainter& painter, const TimelineScene& scene,
                                 const QRectF& exposed, double width) {
  const double left = scene.componentsWidth;
  if (exposed.right() > left) {
    painter.save();
    painter.setClipRect(QRectF(left, 0, width - left, thickness), Qt::IntersectClip);
    painter.fillRect(QRectF(left, 0, width - left, thickness),
                     TYStyleKit::colour(Token::TimelineRuler));
    painter.translate(left, 0);
    if (scene.composition) {
      drawStopframes(painter, scene);
      drawTimelineRuler(painter, scene, exposed.left() - left, exposed.right() - left);
      drawEndHandle(painter, scene);
      drawMarker(painter, scene);
    }
    painter.restore();
  }
  if (exposed.left() < left) drawCorner(painter, scene);
  DevicePixels(painter).horizontal(exposed.left(), exposed.right(), thickness - 1,
                                   TYStyleKit::colour(Token::Separator));
}

}  // namespace timeline
