#include "timeline/RowPainter.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "model/Composition.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace timeline {

using model::Attribute;
using model::QuartzComponent;
using widgets::DevicePixels;
using widgets::Token;
using widgets::TYStyleKit;
using Measures = TimelineMeasures;
using Space = TYTimelineGeometry::Space;

namespace {

constexpr double barRadius = Measures::componentHeight * 0.1;
constexpr double gripInset = 3;
constexpr double gripHeight = 8;
constexpr double narrowestWithGrips = 16;
constexpr double glyphSize = 16;
constexpr double curveMargin = 4;  // above and below the curve in its row
constexpr double joiningOpacity = 0.3;
constexpr double editorOpacity = 0.62;
constexpr double playoutOpacity = 0.28;

QColor withOpacity(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

void drawGrips(QPainter& painter, const QRectF& bar) {
  if (bar.width() < narrowestWithGrips) return;
  const DevicePixels pixels(painter);
  const double top = bar.center().y() - gripHeight / 2;
  const QColor color = withOpacity(Qt::white, 0.75);
  pixels.vertical(bar.left() + gripInset, top, top + gripHeight, color);
  pixels.vertical(bar.right() - gripInset - 1, top, top + gripHeight, color);
}

void drawOutline(QPainter& painter, const QRectF& bar, const QColor& color, Qt::PenStyle style) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  QPen pen(color, 1, style);
  if (style == Qt::DashLine) pen.setDashPattern({3, 2});
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(bar.adjusted(0.5, 0.5, -0.5, -0.5), barRadius, barRadius);
  painter.restore();
}

}  // namespace

bool isBroken(const QuartzComponent& component) {
  return component.quartzCompositionData().isEmpty() || !component.program();
}

void RowPainter::fillComponent(QPainter& painter, const QuartzComponent* component,
                               const QRectF& rect, int row) {
  painter.fillRect(rect,
                   TYStyleKit::colour(row % 2 != 0 ? Token::TimelineRowAlt : Token::TimelineRow));
  if (!component || !component->selected()) return;
  const QRectF ground = rect.adjusted(0, 0, 0, -1);
  painter.fillRect(ground, TYStyleKit::colour(Token::SelectionRow));
  if (TYStyleKit::shared().theme().highContrast)
    DevicePixels(painter).edge(ground, TYStyleKit::colour(Token::Accent), 0, 2);
}

void RowPainter::keepOnly(const QList<Attribute*>& attributes) {
  const QSet<const Attribute*> kept(attributes.cbegin(), attributes.cend());
  m_curves.removeIf([&](const auto& entry) { return !kept.contains(entry.key()); });
}

void RowPainter::drawRow(QPainter& painter, const TimelineScene& scene, const TimelineRow& row,
                         int index, double fromX, double toX) {
  if (row.isComponent())
    drawBar(painter, scene, *row.component, index, toX);
  else if (row.attribute)
    drawKeyFrames(painter, scene, *row.attribute, index, fromX, toX);
}

void RowPainter::drawBar(QPainter& painter, const TimelineScene& scene,
                         const QuartzComponent& component, int row, double toX) {
  const QRectF rect =
      scene.geometry.componentRectForRow(component.startTime(), component.duration(), row);
  const QRectF bar = rect.adjusted(0, Measures::barInset, 0, -Measures::barInset);
  if (bar.left() > toX) return;
  if (isBroken(component)) {
    const QColor color = TYStyleKit::colour(Token::Broken);
    drawOutline(painter, bar, color, Qt::DashLine);
    widgets::TYGlyph::paint(
        painter, QStringLiteral("Broken"),
        {bar.right() + 4, bar.center().y() - glyphSize / 2, glyphSize, glyphSize}, color);
    return;
  }
  if (!component.visibleInCompositionEditor()) {
    drawOutline(painter, bar,
                TYStyleKit::colour(component.selected() ? Token::BarSelected : Token::BarHidden),
                Qt::SolidLine);
    return;
  }
  DevicePixels(painter).fill(
      bar, TYStyleKit::colour(component.selected() ? Token::BarSelected : Token::Bar), barRadius);
  if (component.selected()) drawGrips(painter, bar);
}

void RowPainter::drawKeyFrames(QPainter& painter, const TimelineScene& scene,
                               const Attribute& attribute, int row, double fromX, double toX) {
  const QList<double> times = KeyFrameSelection::timesOf(attribute);
  if (times.isEmpty()) return;
  const QColor ink = TYStyleKit::colour(Token::Keyframe);
  const QColor chosen = TYStyleKit::colour(Token::KeyframeSelected);
  const QColor edge = TYStyleKit::colour(Token::Text);
  const QSizeF size = Measures::keyframeSize;
  const double first = scene.geometry.keyFrameRect(times.first(), row).center().x();
  const double last = scene.geometry.keyFrameRect(times.last(), row).center().x();
  const double left = std::max(first, fromX);
  const double right = std::min(last, toX);
  if (right > left) {
    const double middle = (row + 0.5) * Measures::componentHeight;
    DevicePixels(painter).horizontal(left, right, middle - 0.5, withOpacity(ink, joiningOpacity));
    drawCurve(painter, scene.geometry, attribute, row, left, right);
  }
  for (const double time : times) {
    const QPointF centre = scene.geometry.keyFrameRect(time, row).center();
    if (centre.x() + size.width() < fromX || centre.x() - size.width() > toX) continue;
    const bool isSelected = attribute.isTimePointSelected(time);
    m_stamps.draw(painter, centre, size, isSelected ? chosen : ink, isSelected ? edge : QColor());
    if (scene.hasFocus && scene.currentRow == row && scene.currentTime == time)
      DevicePixels(painter).edge(QRectF(centre - QPointF(8, 8), QSizeF(16, 16)),
                                 TYStyleKit::colour(Token::Accent), 4, 2);
  }
}

const AttributeCurve& RowPainter::curveOf(const Attribute& attribute) {
  const auto known = m_curves.constFind(&attribute);
  return known != m_curves.constEnd() ? *known
                                      : *m_curves.insert(&attribute, AttributeCurve(attribute));
}

void RowPainter::drawCurve(QPainter& painter, const TYTimelineGeometry& geometry,
                           const Attribute& attribute, int row, double fromX, double toX) {
  const AttributeCurve& curve = curveOf(attribute);
  if (curve.isFlat()) return;
  const double bottom = (row + 1) * Measures::componentHeight - curveMargin;
  const double height = Measures::componentHeight - 2 * curveMargin;
  const auto place = [&](const QPointF& point) {
    return QPointF(TYTimelineGeometry::xOffset + geometry.xPositionAtTime(point.x()) + 0.5,
                   bottom - point.y() * height);
  };
  const auto draw = [&](const QList<QPointF>& points, double opacity) {
    QPolygonF line;
    for (qsizetype i = 0; i < points.size(); ++i) {
      const QPointF here = place(points[i]);
      // One point beyond either end, so that lines go on to the edge.
      if (i + 1 < points.size() && place(points[i + 1]).x() < fromX) continue;
      line.append(here);
      if (here.x() > toX) break;
    }
    painter.setPen(QPen(withOpacity(TYStyleKit::colour(Token::Keyframe), opacity), 1));
    painter.drawPolyline(line);
  };
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  draw(curve.inPlayout(), playoutOpacity);
  draw(curve.inEditor(), editorOpacity);
  painter.restore();
}

}  // namespace timeline
