#include "canvas/SafeAreasLayer.h"

#include <QPainter>

#include "model/Composition.h"
#include "widgets/DevicePixels.h"
#include "widgets/SafeAreas.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

void SafeAreasLayer::paint(QPainter& painter, const CanvasGeometry& geometry) const {
  if (!geometry.isValid()) return;
  if (m_composition.showsSafeZones()) widgets::SafeAreas(geometry.pictureFrame()).paint(painter);
  if (!m_composition.showsRulers()) return;
  const widgets::DevicePixels pixels(painter);
  const QColor color = widgets::TYStyleKit::colour(widgets::Token::Guide);
  for (const model::Ruler* ruler : m_composition.rulers()) {
    const QPointF at = geometry.viewPoint({ruler->position(), ruler->position()});
    if (ruler->horizontal())
      pixels.horizontal(0, geometry.view().width(), at.y(), color);
    else
      pixels.vertical(at.x(), 0, geometry.view().height(), color);
  }
}

}  // namespace canvas
