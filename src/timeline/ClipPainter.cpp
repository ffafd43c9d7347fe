#include "timeline/ClipPainter.h"

#include <QCoreApplication>
#include <QPainter>
#include <cmath>

#include "model/Composition.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace timeline {

using widgets::DevicePixels;
using widgets::Token;
using widgets::TYStyleKit;
using Measures = TimelineMeasures;
using Space = TYTimelineGeometry::Space;

namespace {

constexpr double stopFrameOpacity = 0.8;
constexpr double haloOpacity = 0.6;
constexpr double guideOpacity = 0.5;

QColor faded(Token token, double opacity) {
  QColor color = TYStyleKit::colour(token);
  color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
  return color;
}

void drawStopFrames(QPainter& painter, const TimelineScene& scene, const QRectF& seen) {
  QPen pen(faded(Token::StopFrame, stopFrameOpacity), 1);
  pen.setCapStyle(Qt::FlatCap);
  pen.setDashPattern({1, 3});
  // From the top of all rows, so that dots stay where they are when a part is painted.
  const double top = std::floor(seen.top() / 4) * 4;
  painter.setPen(pen);
  for (const double time : scene.composition->stopFrameTimepoints()) {
    const double x = scene.geometry.xPositionAtTime(time, Space::Rows) + 0.5;
    if (x >= seen.left() - 1 && x <= seen.right() + 1)
      painter.drawLine(QPointF(x, top), QPointF(x, seen.bottom()));
  }
}

void drawGhosts(QPainter& painter, const TimelineMarks& marks) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  QPen pen(TYStyleKit::colour(Token::Accent), 1);
  pen.setDashPattern({3, 2});
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  for (const QRectF& ghost : marks.barGhosts)
    painter.drawRoundedRect(ghost.adjusted(0.5, 0.5, -0.5, -0.5), 2.4, 2.4);
  painter.restore();
  for (const QRectF& ghost : marks.keyFrameGhosts)
    TimelineGlyphs::drawDiamondAtPoint(painter, ghost.center(), ghost.size(), Qt::transparent,
                                       TYStyleKit::colour(Token::Accent));
}

void drawMarks(QPainter& painter, const TimelineScene& scene, const QRectF& seen) {
  const DevicePixels pixels(painter);
  const QColor accent = TYStyleKit::colour(Token::Accent);
  const auto line = [&](const std::optional<double>& time, const QColor& color) {
    if (time)
      pixels.vertical(scene.geometry.xPositionAtTime(*time, Space::Rows), seen.top(), seen.bottom(),
                      color);
  };
  line(scene.marks.guideTime, faded(Token::Accent, guideOpacity));
  line(scene.marks.snapTime, accent);
  if (scene.marks.insertRow >= 0)
    painter.fillRect(
        QRectF(seen.left(), scene.marks.insertRow * Measures::componentHeight - 1, seen.width(), 2),
        accent);
  if (!scene.marks.marquee.isNull()) {
    painter.fillRect(scene.marks.marquee, TYStyleKit::colour(Token::DropTarget));
    pixels.edge(scene.marks.marquee, accent);
  }
}

void drawEmpty(QPainter& painter, const QSizeF& view) {
  const QRectF room(QPointF(0, view.height() / 2 - 20), QSizeF(view.width(), 40));
  const auto draw = [&](widgets::TextStyle style, Token token, const QRectF& rect,
                        const char* text) {
    painter.setFont(TYStyleKit::font(style));
    painter.setPen(TYStyleKit::colour(token));
    painter.drawText(rect, Qt::AlignCenter, QCoreApplication::translate("timeline", text));
  };
  draw(widgets::TextStyle::Title, Token::Text, room.adjusted(0, 0, 0, -20),
       QT_TRANSLATE_NOOP("timeline", "No components yet"));
  draw(widgets::TextStyle::Body, Token::Text2, room.adjusted(0, 20, 0, 0),
       QT_TRANSLATE_NOOP("timeline", "Each component you add appears here as a bar over time."));
}

}  // namespace

QRect ClipPainter::markerStrip(int x, int height) {
  const int halo = static_cast<int>(TimelineGlyphs::markerHalo);
  return {x - halo, 0, 1 + 2 * halo, height};
}

void ClipPainter::drawGrounds(QPainter& painter, const TimelineScene& scene, int first, int last,
                              const QRectF& seen) const {
  const bool outlines = TYStyleKit::shared().theme().highContrast;
  for (int row = first; row <= last; ++row) {
    const TimelineRow content = scene.rows.at(row);
    const bool isSelected = content.isComponent() && content.component->selected();
    m_grounds.draw(painter, row,
                   isSelected     ? GroundStrips::Selected
                   : row % 2 != 0 ? GroundStrips::Odd
                                  : GroundStrips::Even,
                   seen.left(), seen.right());
    if (isSelected && outlines)
      RowPainter::fillComponent(
          painter, content.component,
          {seen.left(), row * Measures::componentHeight, seen.width(), Measures::componentHeight},
          row);
  }
}

void ClipPainter::drawComponents(QPainter& painter, const TimelineScene& scene, int first, int last,
                                 const QRectF& seen) {
  for (int row = first; row <= last && row < scene.rows.count(); ++row)
    m_rows.drawRow(painter, scene, scene.rows.at(row), row, seen.left(), seen.right());
}

void ClipPainter::drawClip(QPainter& painter, const TimelineScene& scene, const QRectF& exposed,
                           const QSizeF& view) {
  const QPointF origin = scene.geometry.visibleOrigin();
  const QRectF seen = exposed.translated(origin);
  const int first = std::max(0, static_cast<int>(seen.top() / Measures::componentHeight));
  const int last = static_cast<int>(seen.bottom() / Measures::componentHeight);
  painter.save();
  painter.translate(-origin);
  m_grounds.update(scene, view.width(), std::abs(painter.deviceTransform().m11()));
  drawGrounds(painter, scene, first, last, seen);
  if (scene.composition) {
    drawComponents(painter, scene, first, last, seen);
    drawStopFrames(painter, scene, seen);
    drawGhosts(painter, scene.marks);
    TimelineGlyphs::drawMarkerAtPosition(
        painter, scene.geometry.positionOfEditorTimeInRuler(Space::Rows),
        TYStyleKit::colour(Token::Marker), faded(Token::TimelineRow, haloOpacity), seen);
    drawMarks(painter, scene, seen);
  }
  painter.restore();
  if (scene.composition && scene.rows.count() == 0) drawEmpty(painter, view);
}

}  // namespace timeline
