#include "canvas/CanvasGeometry.h"

#include <cmath>

namespace canvas {

namespace {

constexpr double fitGap = 8;         ///< beside a ruler's thickness, on every side
constexpr double scrollMargin = 50;  ///< of a picture that does not fit, both sides together

}  // namespace

float CanvasGeometry::zoomFactor(qint32 zoomMode, const QSizeF& content, const QSizeF& picture,
                                 const QSizeF& rulers) {
  if (zoomMode != 0) return static_cast<float>(zoomMode) / 100.0F;
  const double across = (content.width() - 2 * (rulers.width() + fitGap)) / picture.width();
  const double up = (content.height() - 2 * (rulers.height() + fitGap)) / picture.height();
  return static_cast<float>(std::isnan(across) || up < across ? up : across);
}

QSizeF CanvasGeometry::documentViewSize(const QSizeF& content, const QSizeF& zoomedPicture) {
  const auto side = [](double room, double wanted) {
    return wanted >= room ? wanted + scrollMargin : room;
  };
  return {side(content.width(), zoomedPicture.width()),
          side(content.height(), zoomedPicture.height())};
}

QRectF CanvasGeometry::pictureFrame() const {
  const QSizeF size(zoomedDocumentWidth(), zoomedDocumentHeight());
  // On whole points, so that the picture's edge is as sharp as it can be.
  return {QPointF(std::floor((m_view.width() - size.width()) / 2),
                  std::floor((m_view.height() - size.height()) / 2)),
          size};
}

QPointF CanvasGeometry::viewPoint(const QPointF& picturePoint) const {
  const QRectF frame = pictureFrame();
  return {frame.left() + picturePoint.x() * m_zoom, frame.bottom() - picturePoint.y() * m_zoom};
}

QRectF CanvasGeometry::viewRect(const QRectF& pictureRect) const {
  return QRectF(viewPoint(pictureRect.topLeft()), viewPoint(pictureRect.bottomRight()))
      .normalized();
}

QPointF CanvasGeometry::picturePoint(const QPointF& viewPoint) const {
  if (m_zoom == 0) return {};
  const QRectF frame = pictureFrame();
  return {(viewPoint.x() - frame.left()) / m_zoom, (frame.bottom() - viewPoint.y()) / m_zoom};
}

QRectF CanvasGeometry::pictureRect(const QRectF& viewRect) const {
  return QRectF(picturePoint(viewRect.topLeft()), picturePoint(viewRect.bottomRight()))
      .normalized();
}

QPointF CanvasGeometry::drawingAreaOffset() const {
  return {(m_view.width() - m_picture.width()) * 0.5, (m_view.height() - m_picture.height()) * 0.5};
}

QPointF CanvasGeometry::relativePointToAbsolutePoint(const QPointF& point) const {
  const QPointF inView = viewPoint(point);
  return {inView.x(), m_view.height() - inView.y()};
}

QPointF CanvasGeometry::absolutePointToRelativePoint(const QPointF& point) const {
  return picturePoint({point.x(), m_view.height() - point.y()});
}

QRectF CanvasGeometry::relativeFrameToAbsoluteZoomLevelFrame(const QRectF& frame) const {
  return {relativePointToAbsolutePoint(frame.topLeft()), frame.size() * m_zoom};
}

QTransform CanvasGeometry::zoomTransformation() const {
  return zoomScaleTransformation() *
         QTransform::fromTranslate((m_view.width() - m_view.width() * m_zoom) * 0.5,
                                   (m_view.height() - m_view.height() * m_zoom) * 0.5);
}

}  // namespace canvas
