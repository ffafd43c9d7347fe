#include "canvas/SelectionOverlay.h"

#include <QPainter>
#include <cmath>

#include "model/QuartzComponent.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

using model::ComponentHandles;
using widgets::Token;
using widgets::TYStyleKit;

namespace {

/// Handles at the ends that lie closer than this many, from edge to edge, have none between them.
constexpr double roomForMiddle = 5;
/// An outline with a side shorter than this many has its handles outside.
constexpr double roomForHold = 6;
/// The least that a hand can take hold of, in points.
constexpr double leastHold = 10;

struct Ink {
  QColor line;
  QColor edge;
  double edgeWidth;  ///< device pixels
};

Ink currentInk() {
  if (TYStyleKit::shared().theme().highContrast) return {Qt::white, Qt::black, 2};
  return {TYStyleKit::colour(Token::CanvasSelection),
          TYStyleKit::colour(Token::CanvasSelectionEdge), 1};
}

}  // namespace

SelectionOverlay::SelectionOverlay(const model::QuartzComponent& component,
                                   const CanvasGeometry& geometry)
    : m_outline(geometry.viewRect(component.handles().rects()[0])),
      m_degrees(component.zRotation()) {
  layOutHandles(std::max(leastHandle, std::round(ComponentHandles::size * geometry.zoomFactor())));
}

bool SelectionOverlay::isShown(const model::QuartzComponent& component) {
  return component.selected() && component.visible() && component.visibleInCompositionEditor();
}

SelectionOverlay::Places SelectionOverlay::placesAlong(double low, double high, double side,
                                                       bool outside) {
  const double first = outside ? low - side : low;
  const double last = outside ? high : high - side;
  return {{first, (low + high - side) / 2, last}, last + side - first >= roomForMiddle * side};
}

void SelectionOverlay::layOutHandles(double side) {
  m_givesWay = std::min(m_outline.width(), m_outline.height()) < roomForHold * side;
  const auto missing = [this](double length) {
    return m_givesWay ? std::max(0.0, leastHold - length) / 2 : 0;
  };
  const double across = missing(m_outline.width());
  const double down = missing(m_outline.height());
  m_hold = m_outline.adjusted(-across, -down, across, down);
  const Places columns = placesAlong(m_hold.left(), m_hold.right(), side, m_givesWay);
  const Places rows = placesAlong(m_hold.top(), m_hold.bottom(), side, m_givesWay);
  // Column and row (from below) of the handles 1 to 8.
  constexpr std::array<std::array<size_t, 2>, 8> places{
      {{0, 0}, {0, 1}, {0, 2}, {1, 2}, {1, 0}, {2, 0}, {2, 1}, {2, 2}}};
  for (size_t i = 0; i < places.size(); ++i) {
    const auto [column, row] = places[i];
    if ((column == 1 && !columns.hasMiddle) || (row == 1 && !rows.hasMiddle)) continue;
    m_handles[i] = QRectF(columns.at[column], rows.at[2 - row], side, side);
  }
}

QTransform SelectionOverlay::turn() const {
  const QPointF middle = m_outline.center();
  return QTransform::fromTranslate(-middle.x(), -middle.y()) * QTransform().rotate(-m_degrees) *
         QTransform::fromTranslate(middle.x(), middle.y());
}

int SelectionOverlay::handleAt(const QPointF& viewPoint) const {
  const QPointF point = turn().inverted().map(viewPoint);
  for (size_t i = 0; i < m_handles.size(); ++i)
    if (m_handles[i].contains(point)) return static_cast<int>(i) + 1;
  return ComponentHandles::body;
}

bool SelectionOverlay::holdContains(const QPointF& viewPoint) const {
  return m_hold.contains(turn().inverted().map(viewPoint));
}

QRect SelectionOverlay::bounds() const {
  QRectF all = m_outline;
  for (const QRectF& handle : m_handles) all |= handle;
  return turn().mapRect(all).adjusted(-3, -3, 3, 3).toAlignedRect();
}

void SelectionOverlay::paint(QPainter& painter) const {
  painter.save();
  if (m_degrees == 0)
    paintUpright(painter);
  else
    paintTurned(painter);
  painter.restore();
}

void SelectionOverlay::paintUpright(QPainter& painter) const {
  const widgets::DevicePixels pixels(painter);
  const auto [line, edge, edgeWidth] = currentInk();
  const double margin = edgeWidth * pixels.hairline();
  const auto grown = [&](const QRectF& r) {
    return pixels.snapped(r).adjusted(-margin, -margin, margin, margin);
  };
  pixels.edge(grown(m_outline), edge, 0, edgeWidth);
  pixels.edge(m_outline, line);
  for (const QRectF& handle : m_handles) {
    if (handle.isEmpty()) continue;
    pixels.edge(grown(handle), edge, 0, edgeWidth);
    pixels.fill(handle, line);
  }
}

void SelectionOverlay::paintTurned(QPainter& painter) const {
  const auto [line, edge, edgeWidth] = currentInk();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setTransform(turn(), true);
  const auto outline = [&](const QRectF& rect, const QColor& color, double width, double grown) {
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect.adjusted(-grown, -grown, grown, grown));
  };
  outline(m_outline, edge, edgeWidth, edgeWidth / 2);
  outline(m_outline, line, 1, -0.5);
  for (const QRectF& handle : m_handles) {
    if (handle.isEmpty()) continue;
    outline(handle, edge, edgeWidth, edgeWidth / 2);
    painter.fillRect(handle, line);
  }
}

}  // namespace canvas
