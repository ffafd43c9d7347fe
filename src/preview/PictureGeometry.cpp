#include "preview/PictureGeometry.h"

#include <cmath>

namespace preview {

namespace {

constexpr double tolerance = 1e-6;

/// Along one axis: in the middle where there is room, else so that the view is full.
double allowedAlong(double corner, double view, double picture) {
  if (picture <= view + tolerance) return (view - picture) / 2;
  return std::clamp(corner, view - picture, 0.0);
}

double shareOf(double length, double whole) {
  return whole > 0 ? length / whole : 0.5;
}

}  // namespace

void PictureGeometry::setView(const QSizeF& size, double devicePixelRatio) {
  m_view = size;
  m_ratio = devicePixelRatio;
}

double PictureGeometry::scale() const {
  if (m_picture.isEmpty()) return 1;
  if (m_zoom != fit) return m_zoom / 100.0 / m_ratio;
  return std::min(m_view.width() / m_picture.width(), m_view.height() / m_picture.height());
}

QPointF PictureGeometry::allowed(const QPointF& corner) const {
  const QSizeF size = QSizeF(m_picture) * scale();
  return {allowedAlong(corner.x(), m_view.width(), size.width()),
          allowedAlong(corner.y(), m_view.height(), size.height())};
}

QRectF PictureGeometry::pictureRect() const {
  const QSizeF size = QSizeF(m_picture) * scale();
  const QPointF corner =
      middle() - QPointF(m_centre.x() * size.width(), m_centre.y() * size.height());
  return {allowed(corner), size};
}

bool PictureGeometry::isLargerThanView() const {
  const QSizeF size = QSizeF(m_picture) * scale();
  return size.width() > m_view.width() + tolerance || size.height() > m_view.height() + tolerance;
}

void PictureGeometry::keepCorner(const QPointF& corner) {
  const QSizeF size = QSizeF(m_picture) * scale();
  const QPointF toMiddle = middle() - allowed(corner);
  m_centre = {shareOf(toMiddle.x(), size.width()), shareOf(toMiddle.y(), size.height())};
}

void PictureGeometry::setZoom(int percent, const QPointF& about) {
  const double before = scale();
  const QPointF inPicture = (about - pictureRect().topLeft()) / before;
  m_zoom = percent;
  keepCorner(about - inPicture * scale());
}

bool PictureGeometry::moveBy(const QPointF& distance) {
  const QPointF before = pictureRect().topLeft();
  keepCorner(before + distance);
  return pictureRect().topLeft() != before;
}

QSize PictureGeometry::shownPixels() const {
  return (QSizeF(m_picture) * std::min(factor(), 1.0)).toSize();
}

}  // namespace preview
