#include "canvas/TYZoomScrollView.h"

#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include "canvas/CanvasRuler.h"
#include "canvas/CompositionView.h"
#include "model/Composition.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

namespace {

/// Where the rulers meet.
class RulerCorner : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), widgets::TYStyleKit::colour(widgets::Token::CanvasRuler));
  }
};

}  // namespace

TYZoomScrollView::TYZoomScrollView(QWidget* parent)
    : QScrollArea(parent),
      m_horizontal(new CanvasRuler(Qt::Horizontal, this)),
      m_vertical(new CanvasRuler(Qt::Vertical, this)),
      m_corner(new RulerCorner(this)) {
  const int thickness = static_cast<int>(RulerPainter::thickness);
  setFrameShape(QFrame::NoFrame);
  setViewportMargins(thickness, thickness, 0, 0);
  setFocusPolicy(Qt::NoFocus);
  m_corner->setGeometry(0, 0, thickness, thickness);
}

void TYZoomScrollView::setDocumentView(CompositionView* view) {
  m_view = view;
  setWidget(view);
  setFocusProxy(view);
  view->setScrollView(this);
  m_horizontal->setClientView(view);
  m_vertical->setClientView(view);
  followFrame();
}

void TYZoomScrollView::updateDocumentView() {
  if (!m_view) return;
  const CanvasGeometry& geometry = m_view->geometryOfPicture();
  const QSizeF wanted = CanvasGeometry::documentViewSize(
      viewport()->size(), {geometry.zoomedDocumentWidth(), geometry.zoomedDocumentHeight()});
  m_view->resize(wanted.toSize());
}

void TYZoomScrollView::updateRulers() {
  if (!m_view) return;
  const QPointF offset = m_view->pos();
  m_horizontal->follow(*m_view, offset.x());
  m_vertical->follow(*m_view, offset.y());
}

void TYZoomScrollView::followFrame() {
  const QRect inside = viewport()->geometry();
  const int thickness = static_cast<int>(RulerPainter::thickness);
  m_horizontal->setGeometry(inside.left(), 0, inside.width(), thickness);
  m_vertical->setGeometry(0, inside.top(), thickness, inside.height());
  if (m_view) m_view->updateBoundsForZoom();
}

void TYZoomScrollView::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  followFrame();
}

void TYZoomScrollView::scrollContentsBy(int dx, int dy) {
  QScrollArea::scrollContentsBy(dx, dy);
  updateRulers();
}

void TYZoomScrollView::wheelEvent(QWheelEvent* event) {
  // What the canvas leaves scrolls; with the command key nothing is left.
  if (!event->modifiers().testFlag(Qt::ControlModifier)) QScrollArea::wheelEvent(event);
}

void TYZoomScrollView::zoomAround(const QPointF& viewPoint, qint32 zoomMode) {
  if (!m_view || !m_view->composition()) return;
  const QPointF onScreen = m_view->pos() + viewPoint;
  const QPointF inPicture = m_view->geometryOfPicture().picturePoint(viewPoint);
  m_view->composition()->setZoomMode(zoomMode);
  const QPointF now = m_view->pos() + m_view->geometryOfPicture().viewPoint(inPicture);
  scrollBy(now - onScreen);
}

void TYZoomScrollView::scrollBy(const QPointF& points) {
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(points.x()));
  verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(points.y()));
}

}  // namespace canvas
