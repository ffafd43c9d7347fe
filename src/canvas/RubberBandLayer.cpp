#include "canvas/RubberBandLayer.h"

#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

using widgets::Token;
using widgets::TYStyleKit;

void RubberBandLayer::paint(QPainter& painter) const {
  if (m_currentRect.isEmpty()) return;
  const widgets::DevicePixels pixels(painter);
  const double half = pixels.hairline() / 2;
  const QRectF snapped = pixels.snapped(m_currentRect);
  pixels.edge(snapped, TYStyleKit::colour(Token::CanvasSelectionEdge));
  QPen pen(TYStyleKit::colour(Token::RubberBand), 0);
  pen.setJoinStyle(Qt::MiterJoin);
  pen.setDashPattern({3, 2});
  painter.save();
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(snapped.adjusted(half, half, -half, -half));
  painter.restore();
}

}  // namespace canvas
