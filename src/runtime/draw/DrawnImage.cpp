#include "runtime/draw/DrawnImage.h"

#include <optional>

#include "runtime/draw/DepthOrder.h"
#include "runtime/draw/Gradient.h"
#include "runtime/draw/ItemGeometry.h"
#include "runtime/draw/RasterBackend.h"

namespace runtime {

namespace {

/// A list that is drawn again for each use may cost so many times the pixels of the image.
constexpr qint64 worthwhile = 2;

bool isTransparentClear(const DrawItem& item) {
  const auto* clear = std::get_if<ClearItem>(&item);
  return clear && (!clear->clearsColor || !(clear->color.alpha > 0));
}

/// The item laid over a transparent image equals the item laid over anything else.
bool isLaidOver(const DrawItem& item, bool isFirst) {
  if (const auto* quad = std::get_if<QuadItem>(&item))
    return quad->state.blending == Blending::Over && quad->state.colorMask == 15;
  if (const auto* line = std::get_if<LineItem>(&item))
    return line->state.blending == Blending::Over && line->state.colorMask == 15;
  if (const auto* gradient = std::get_if<GradientItem>(&item))
    return gradient->blending == Blending::Over ||
           (gradient->blending == Blending::Replace && isFirst);
  const auto* clear = std::get_if<ClearItem>(&item);
  return clear && (isFirst || !clear->clearsColor);
}

/// A clear or replacing gradient at the start covers the image's area, so it is laid over as well.
DrawItem laidOver(const DrawItem& item, const QSize& size) {
  if (const auto* clear = std::get_if<ClearItem>(&item)) {
    QuadItem quad;
    quad.matrix.scale(2,
                      2.0F * static_cast<float>(size.height()) / static_cast<float>(size.width()));
    quad.color = clear->color;
    return quad;
  }
  DrawItem result = item;
  if (auto* gradient = std::get_if<GradientItem>(&result)) gradient->blending = Blending::Over;
  return result;
}

bool isReplayable(const DrawList& list, const QSize& size) {
  if (size.isEmpty()) return false;
  const Viewport viewport = Viewport::whole(size);
  qint64 pixels = 0;
  bool isFirst = true;
  for (const DrawItem& item : list.items) {
    if (isTransparentClear(item) && isFirst) continue;
    if (!isLaidOver(item, isFirst)) return false;
    const QRect touched = touchedPixels(item, viewport);
    pixels += qint64{touched.width()} * touched.height();
    isFirst = false;
  }
  const qint64 own = qint64{size.width()} * size.height();
  return pixels <= worthwhile * own && paintersOrderSuffices(list);
}

void fade(DrawItem& item, double opacity) {
  const auto faded = [opacity](const foundation::Color& color) {
    foundation::Color c = clamped(color);
    c.alpha *= opacity;
    return c;
  };
  if (auto* quad = std::get_if<QuadItem>(&item)) quad->color = faded(quad->color);
  if (auto* line = std::get_if<LineItem>(&item)) {
    line->startColor = faded(line->startColor);
    line->endColor = faded(line->endColor);
  }
  if (auto* gradient = std::get_if<GradientItem>(&item))
    for (auto& color : gradient->colors) color = faded(color);
}

}  // namespace

DrawnImage::DrawnImage(DrawList list, const QSize& size, QImage before)
    : m_list(std::move(list)),
      m_size(size),
      m_before(std::move(before)),
      m_replayable(m_before.isNull() && isReplayable(m_list, size)) {}

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

std::optional<DrawList> DrawnImage::replay(double opacity) const {
  if (!m_replayable) return std::nullopt;
  DrawList result;
  for (const DrawItem& item : m_list.items)
    if (!isTransparentClear(item)) result.items.push_back(laidOver(item, m_size));
  if (opacity >= 1) return result;
  if (result.items.size() > 1) return std::nullopt;
  for (DrawItem& item : result.items) fade(item, opacity);
  return result;
}

}  // namespace runtime
