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

/// An outline shorter than this many handles has none in its middle.
constexpr double roomForMiddle = 3.5;

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

void SelectionOverlay::layOutHandles(double side) {
  const std::array<double, 3> across{m_outline.left(), m_outline.center().x() - side / 2,
                                     m_outline.right() - side};
  const std::array<double, 3> down{m_outline.bottom() - side, m_outline.center().y() - side / 2,
                                   m_outline.top()};
  const bool middleAcross = m_outline.width() >= roomForMiddle * side;
  const bool middleDown = m_outline.height() >= roomForMiddle * side;
  // Column and row (from below) of the handles 1 to 8.
  constexpr std::array<std::array<size_t, 2>, 8> places{
      {{0, 0}, {0, 1}, {0, 2}, {1, 2}, {1, 0}, {2, 0}, {2, 1}, {2, 2}}};
  for (size_t i = 0; i < places.size(); ++i) {
    const auto [column, row] = places[i];
    if ((column == 1 && !middleAcross) || (row == 1 && !middleDown)) continue;
    m_handles[i] = QRectF(across[column], down[row], side, side);
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
