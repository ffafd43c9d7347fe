#include "canvas/CanvasScene.h"

#include <QPainter>
#include <cmath>

#include "canvas/EmptyHint.h"
#include "canvas/TimecodePlate.h"
#include "model/Composition.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

using widgets::Token;
using widgets::TYStyleKit;

CanvasScene::CanvasScene(model::Composition& composition, CompositionLayer::Clocks clocks)
    : m_composition(composition),
      m_components(composition, std::move(clocks)),
      m_drawingArea(composition,
                    [this] {
                      m_backgroundChanged = true;
                      dropGround();
                    }),
      m_safeAreas(composition) {}

bool CanvasScene::isDisplayed(const CanvasGeometry& geometry, const QRect& part,
                              double devicePixelRatio) const {
  return geometry == m_geometry && part == m_part && devicePixelRatio == m_ratio &&
         !m_ground.isNull();
}

QRegion CanvasScene::display(const CanvasGeometry& geometry, const QRect& part,
                             double devicePixelRatio) {
  QRegion changed;
  const bool wasDisplayed = isDisplayed(geometry, part, devicePixelRatio);
  m_geometry = geometry;
  m_part = part;
  m_ratio = devicePixelRatio;
  if (!wasDisplayed) {
    paintGround();
    changed += part;
  }
  const PictureTarget target = PictureTarget::of(geometry, part, devicePixelRatio);
  for (const QRect& pixels : m_components.display(target)) {
    const QRectF logical(QPointF(pixels.topLeft()) / devicePixelRatio,
                         QSizeF(pixels.size()) / devicePixelRatio);
    changed += logical.toAlignedRect().translated(part.topLeft());
  }
  m_components.setDevicePixelRatio(devicePixelRatio);
  if (std::exchange(m_isEmpty, m_composition.components().size() == 0) != m_isEmpty)
    changed += part;
  if (m_components.brokenMarks() != m_brokenMarks) {
    m_brokenMarks = m_components.brokenMarks();
    changed += part;
  }
  m_overlays.clear();
  for (const model::QuartzComponent* component : m_composition.selectedComponents())
    if (SelectionOverlay::isShown(*component)) m_overlays.emplace_back(*component, geometry);
  const QRegion overlays = overlayRegion();
  if (overlays != m_overlayRegion) changed += overlays + m_overlayRegion;
  m_overlayRegion = overlays;
  return changed;
}

void CanvasScene::paintGround() {
  const QSize pixels(static_cast<int>(std::lround(m_part.width() * m_ratio)),
                     static_cast<int>(std::lround(m_part.height() * m_ratio)));
  m_ground = QImage(pixels, QImage::Format_RGB32);
  if (m_ground.isNull()) return;
  m_ground.setDevicePixelRatio(m_ratio);
  QPainter painter(&m_ground);
  painter.translate(-m_part.topLeft());
  m_drawingArea.paint(painter, m_geometry);
}

QRegion CanvasScene::overlayRegion() const {
  QRegion region;
  for (const SelectionOverlay& overlay : m_overlays) region += overlay.bounds();
  return region;
}

void CanvasScene::paint(QPainter& painter) const {
  painter.drawImage(m_part.topLeft(), m_ground);
  m_components.paint(painter, m_part.topLeft());
  DrawingAreaLayer::paintVeil(painter, m_geometry);
  paintBrokenMarks(painter);
  m_safeAreas.paint(painter, m_geometry);
  paintSnap(painter);
  if (m_isEmpty) EmptyHint::paint(painter, m_geometry.pictureFrame() & QRectF(m_part));
  for (const SelectionOverlay& overlay : m_overlays) overlay.paint(painter);
  paintDropTarget(painter);
  m_rubberBand.paint(painter);
  if (!m_transient.timecode.isEmpty())
    TimecodePlate::paint(painter,
                         TimecodePlate::place(m_geometry, QRectF(m_part), m_transient.timecode),
                         m_transient.timecode);
}

void CanvasScene::paintBrokenMarks(QPainter& painter) const {
  for (const BrokenMark& mark : m_brokenMarks) mark.paint(painter, m_geometry.viewRect(mark.frame));
}

QString CanvasScene::problemOf(const model::QuartzComponent& component) const {
  for (const BrokenMark& mark : m_brokenMarks)
    if (mark.component == &component) return mark.text();
  return {};
}

QString CanvasScene::problemAt(const QPointF& viewPoint) const {
  const QPointF point = m_geometry.picturePoint(viewPoint);
  for (auto mark = m_brokenMarks.crbegin(); mark != m_brokenMarks.crend(); ++mark)
    if (mark->frame.contains(point)) return mark->text();
  return {};
}

void CanvasScene::paintSnap(QPainter& painter) const {
  const widgets::DevicePixels pixels(painter);
  const QColor color = TYStyleKit::colour(Token::Guide);
  const double line = 2 * pixels.hairline();
  const QPointF at = m_geometry.viewPoint(
      {m_transient.snap.vertical.value_or(0), m_transient.snap.horizontal.value_or(0)});
  if (m_transient.snap.horizontal)
    pixels.fill(QRectF(0, at.y(), m_geometry.view().width(), line), color);
  if (m_transient.snap.vertical)
    pixels.fill(QRectF(at.x(), 0, line, m_geometry.view().height()), color);
}

void CanvasScene::paintDropTarget(QPainter& painter) const {
  if (!m_transient.isDropTarget) return;
  const widgets::DevicePixels pixels(painter);
  const QRectF frame = m_geometry.pictureFrame();
  pixels.fill(frame, TYStyleKit::colour(Token::DropTarget));
  pixels.edge(frame, TYStyleKit::colour(Token::Accent), 0, 2 / pixels.hairline());
}

QRect CanvasScene::timecodePlace() const {
  if (m_transient.timecode.isEmpty()) return {};
  return TimecodePlate::place(m_geometry, QRectF(m_part), m_transient.timecode)
      .toAlignedRect()
      .adjusted(-1, -1, 1, 1);
}

}  // namespace canvas
