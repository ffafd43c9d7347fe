#include "runtime/draw/QuadPainter.h"

#include <cmath>

#include "runtime/draw/BitmapCache.h"

namespace runtime {

namespace {

/// The painter's own coordinates end soon after this many pixels.
constexpr double farAway = 16000;

/// Edges this near to a whole pixel mean the whole pixel: matrices are single precision.
constexpr double snapDistance = 1.0 / 256;

QPainter::CompositionMode modeOf(Blending blending) {
  if (blending == Blending::Replace) return QPainter::CompositionMode_Source;
  if (blending == Blending::Add) return QPainter::CompositionMode_Plus;
  return QPainter::CompositionMode_SourceOver;
}

double snapped(double value) {
  const double whole = std::round(value);
  return std::abs(value - whole) < snapDistance ? whole : value;
}

bool isAligned(const QTransform& toPixels) {
  // Over the unit square the slanting terms make no visible difference.
  return toPixels.isAffine() && std::abs(toPixels.m12()) < snapDistance &&
         std::abs(toPixels.m21()) < snapDistance;
}

/// The image of the unit square around the origin; its sides may run backwards.
QRectF alignedRect(const QTransform& t) {
  const double left = snapped(t.dx() - t.m11() / 2);
  const double right = snapped(t.dx() + t.m11() / 2);
  const double top = snapped(t.dy() + t.m22() / 2);
  const double bottom = snapped(t.dy() - t.m22() / 2);
  return {QPointF(left, top), QPointF(right, bottom)};
}

bool isWhole(const QRectF& r) {
  return r.left() == std::round(r.left()) && r.top() == std::round(r.top()) &&
         r.right() == std::round(r.right()) && r.bottom() == std::round(r.bottom());
}

/// From the bitmap's pixels, first row on top, to the screen's.
QTransform bitmapTransform(const QSize& size, const QTransform& toPixels) {
  if (isAligned(toPixels)) {
    const QRectF rect = alignedRect(toPixels);
    double scaleX = rect.width() / size.width();
    const double scaleY = rect.height() / size.height();
    // A transformation that only moves would be rounded to whole pixels by the painter.
    if (scaleX == 1 && scaleY == 1) scaleX += 1e-9;
    return {scaleX, 0, 0, scaleY, rect.left(), rect.top()};
  }
  return QTransform(1.0 / size.width(), 0, 0, -1.0 / size.height(), -0.5, 0.5) * toPixels;
}

}  // namespace

std::optional<QRect> QuadPainter::exactPlace(const QSize& image, const QTransform& toPixels) {
  if (!isAligned(toPixels)) return std::nullopt;
  const QRectF rect = alignedRect(toPixels);
  if (!isWhole(rect) || rect.size() != QSizeF(image)) return std::nullopt;
  return rect.toRect();
}

bool QuadPainter::canPaint(const QuadItem& quad, const QuadCorners& corners) {
  if (quad.state.blending == Blending::Alpha || quad.state.colorMask != 15) return false;
  if (quad.state.lighting) return false;
  if (!quad.image.isNull() && !quad.image.textureMatrix().isIdentity()) return false;
  if (quad.image.isNull() && !quad.mask.isNull()) return false;
  if (corners.crossesNearPlane(quad.state.eyeDistance)) return false;
  const QRectF bounds = corners.pixelBounds();
  return bounds.left() > -farAway && bounds.top() > -farAway && bounds.right() < farAway &&
         bounds.bottom() < farAway;
}

void QuadPainter::paint(const QuadItem& quad, const QuadCorners& corners,
                        const Viewport& viewport) {
  const QTransform toPixels = pixelTransform(quad.matrix, quad.state.eyeDistance, viewport);
  m_painter.setCompositionMode(modeOf(quad.state.blending));
  if (quad.image.isNull())
    fill(quad, toPixels, viewport.clip);
  else
    drawImage(quad, corners, toPixels);
}

void QuadPainter::fill(const QuadItem& quad, const QTransform& toPixels, const QRect& clip) {
  const QColor color = clamped(quad.color).toQColor();
  if (isAligned(toPixels)) {
    const QRectF rect = alignedRect(toPixels).normalized();
    if (isWhole(rect))
      m_painter.fillRect(rect.toRect() & clip, color);
    else
      m_painter.fillRect(rect, color);
    return;
  }
  const QTransform before = m_painter.transform();
  m_painter.setTransform(toPixels);
  m_painter.fillRect(QRectF(-0.5, -0.5, 1, 1), color);
  m_painter.setTransform(before);
}

void QuadPainter::drawImage(const QuadItem& quad, const QuadCorners& corners,
                            const QTransform& toPixels) {
  const foundation::Color color = clamped(quad.color);
  QImage bitmap = quad.image.bitmap();
  if (bitmap.isNull()) return;
  BitmapChange change;
  change.tint(color);
  change.mask = quad.mask.bitmap();
  change.reduce(bitmap.size(), corners.pixelSize());
  // The painter's opacity mixes the result with what was there: right only for Over.
  const bool fades = quad.state.blending != Blending::Over;
  if (fades) change.fade(color.alpha);
  bitmap = BitmapCache::shared().changed(bitmap, change);
  m_painter.setOpacity(fades ? 1 : color.alpha);
  if (const auto place = exactPlace(bitmap.size(), toPixels)) {
    m_painter.drawImage(place->topLeft(), bitmap);
  } else {
    const QTransform before = m_painter.transform();
    m_painter.setTransform(bitmapTransform(bitmap.size(), toPixels));
    m_painter.drawImage(QPointF(), bitmap);
    m_painter.setTransform(before);
  }
  m_painter.setOpacity(1);
}

}  // namespace runtime
