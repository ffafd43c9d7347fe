#include "runtime/draw/RasterBackend.h"

#include <QPainter>

namespace runtime {

namespace {

QPainter::CompositionMode modeOf(Blending blending) {
  switch (blending) {
    case Blending::Replace:
      return QPainter::CompositionMode_Source;
    case Blending::Add:
      return QPainter::CompositionMode_Plus;
    default:
      return QPainter::CompositionMode_SourceOver;
  }
}

/// Unit square of an item → pixels of the target, rows downwards.
QTransform pixelTransform(const QMatrix4x4& m, float eye, const QSize& size) {
  // Homogeneous image of a point (u, v, 0, 1): x·eye/(eye − z), in units, then pixels.
  const double s = size.width() / 2.0;
  const auto row = [&m](int r) { return std::array<double, 3>{m(r, 0), m(r, 1), m(r, 3)}; };
  const auto x = row(0);
  const auto y = row(1);
  const auto z = row(2);
  std::array<double, 3> w{};
  for (size_t i = 0; i < 3; ++i) w[i] = (i == 2 ? 1.0 : 0.0) - z[i] / eye;
  std::array<double, 3> px{};
  std::array<double, 3> py{};
  for (size_t i = 0; i < 3; ++i) {
    px[i] = x[i] * s + w[i] * size.width() / 2.0;
    py[i] = -y[i] * s + w[i] * size.height() / 2.0;
  }
  return {px[0], py[0], w[0], px[1], py[1], w[1], px[2], py[2], w[2]};
}

}  // namespace

void RasterBackend::draw(const DrawList& list, QImage& target) {
  QPainter painter(&target);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  for (const DrawItem& item : list.items) {
    painter.resetTransform();
    painter.setOpacity(1);
    if (const auto* clear = std::get_if<ClearItem>(&item)) {
      if (!clear->clearsColor) continue;
      painter.setCompositionMode(QPainter::CompositionMode_Source);
      painter.fillRect(target.rect(), clear->color.toQColor());
    } else if (const auto* quad = std::get_if<QuadItem>(&item)) {
      painter.setCompositionMode(modeOf(quad->state.blending));
      painter.setTransform(pixelTransform(quad->matrix, quad->state.eyeDistance, target.size()));
      if (quad->image.isNull()) {
        painter.fillRect(QRectF(-0.5, -0.5, 1, 1), quad->color.toQColor());
      } else {
        painter.setOpacity(quad->color.alpha);
        painter.scale(1, -1);
        painter.drawImage(QRectF(-0.5, -0.5, 1, 1), quad->image.bitmap());
      }
    }
  }
}

DrawnImage::DrawnImage(DrawList list, const QSize& size, QImage before)
    : m_list(std::move(list)), m_size(size), m_before(std::move(before)) {}

QImage DrawnImage::pixels(const QRect& area) const {
  QImage image = m_before;
  if (image.isNull()) {
    image = QImage(m_size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
  }
  RasterBackend().draw(m_list, image);
  if (area == extent()) return image;
  return image.copy(area.x(), m_size.height() - area.y() - area.height(), area.width(),
                    area.height());
}

}  // namespace runtime
