#include "canvas/CanvasRuler.h"

#include <QMouseEvent>
#include <QPainter>

#include "canvas/CanvasCursors.h"
#include "canvas/CompositionView.h"

namespace canvas {

CanvasRuler::CanvasRuler(Qt::Orientation orientation, QWidget* parent) : QWidget(parent) {
  const bool across = orientation == Qt::Horizontal;
  m_painter.orientation = orientation;
  setCursor(cursorForGuide(across));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAccessibleName(across ? tr("Horizontal ruler") : tr("Vertical ruler"));
  setToolTip(tr("Drag a guide out of the ruler, or double-click"));
}

void CanvasRuler::follow(const CompositionView& view, double offset) {
  RulerPainter next = m_painter;
  const bool across = m_painter.orientation == Qt::Horizontal;
  const CanvasGeometry& geometry = view.geometryOfPicture();
  const QPointF zero = geometry.viewPoint({0, 0});
  next.origin = offset + (across ? zero.x() : zero.y());
  next.unit = view.rulerUnit();
  const QRectF selected = view.selectionExtent();
  next.extent.reset();
  if (!selected.isNull())
    next.extent = across ? RulerPainter::Extent{selected.left(), selected.right()}
                         : RulerPainter::Extent{selected.top(), selected.bottom()};
  show(next);
}

void CanvasRuler::setPointer(const std::optional<double>& position) {
  RulerPainter next = m_painter;
  next.pointer = position;
  show(next);
}

void CanvasRuler::show(const RulerPainter& painter) {
  if (painter == m_painter) return;
  m_painter = painter;
  update();
}

void CanvasRuler::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  m_painter.paint(painter, m_painter.orientation == Qt::Horizontal ? width() : height());
}

void CanvasRuler::mousePressEvent(QMouseEvent* event) {
  if (m_view && event->button() == Qt::LeftButton) m_view->pullGuide(m_painter.orientation);
}

void CanvasRuler::mouseMoveEvent(QMouseEvent* event) {
  if (m_view) m_view->continueGesture(event->globalPosition(), event->modifiers());
}

void CanvasRuler::mouseReleaseEvent(QMouseEvent* event) {
  if (m_view) m_view->endGesture(event->globalPosition(), event->modifiers());
}

void CanvasRuler::mouseDoubleClickEvent(QMouseEvent* event) {
  if (m_view && event->button() == Qt::LeftButton)
    m_view->addGuideFromRuler(m_painter.orientation, event->globalPosition());
}

}  // namespace canvas
