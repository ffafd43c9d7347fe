#include "runtime/draw/FrameCanvas.h"

#include "runtime/draw/Gradient.h"
#include "runtime/draw/ItemGeometry.h"
#include "runtime/draw/RasterBackend.h"

namespace runtime {

namespace {

bool startsTransparent(const DrawList& list) {
  if (list.items.empty()) return false;
  const auto* clear = std::get_if<ClearItem>(&list.items.front());
  return clear && clear->clearsColor && !(clear->color.alpha > 0);
}

/// The first item writes every pixel, so that nothing needs erasing.
bool startsCovered(const DrawList& list) {
  if (list.items.empty()) return false;
  if (const auto* clear = std::get_if<ClearItem>(&list.items.front())) return clear->clearsColor;
  const auto* gradient = std::get_if<GradientItem>(&list.items.front());
  return gradient && GradientRamp::coversEverything(*gradient);
}

}  // namespace

void TouchedRows::add(const QRect& pixels) {
  for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
    Stretch& stretch = m_rows[static_cast<size_t>(y)];
    const bool isEmpty = stretch.left >= stretch.right;
    stretch.left = isEmpty ? pixels.left() : std::min(stretch.left, pixels.left());
    stretch.right = isEmpty ? pixels.right() + 1 : std::max(stretch.right, pixels.right() + 1);
  }
}

QRect TouchedRows::bounds() const {
  QRect all;
  for (size_t y = 0; y < m_rows.size(); ++y)
    if (const Stretch& stretch = m_rows[y]; stretch.left < stretch.right)
      all |= QRect(stretch.left, static_cast<int>(y), stretch.right - stretch.left, 1);
  return all;
}

void TouchedRows::erase(QImage& image, const QRect& area) const {
  for (int y = area.top(); y <= area.bottom(); ++y) {
    const Stretch& stretch = m_rows[static_cast<size_t>(y)];
    if (stretch.left < stretch.right)
      std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)) + stretch.left,
                  stretch.right - stretch.left, 0U);
  }
}

FrameCanvas::FrameCanvas(const QSize& size, int bands)
    : m_image(size, QImage::Format_ARGB32_Premultiplied),
      m_touched(m_image.height()),
      m_bands(bands) {
  m_image.fill(Qt::transparent);
}

const QImage& FrameCanvas::draw(const DrawList& list) {
  if (m_image.isNull()) return m_image;
  DrawList shorter;
  const bool transparent = startsTransparent(list);
  if (transparent) shorter.items.assign(list.items.begin() + 1, list.items.end());
  const DrawList& drawn = transparent ? shorter : list;
  FrameDrawer::Preparation erase;
  if (!startsCovered(drawn))
    erase = [this](QImage& image, const QRect& area) { m_touched.erase(image, area); };
  if (m_bands > 0) {
    FrameDrawer(m_bands).draw(drawn, m_image, erase);
  } else {
    if (erase) erase(m_image, m_image.rect());
    RasterBackend().draw(drawn, m_image);
  }
  m_touched.reset();
  const Viewport viewport = Viewport::whole(m_image.size());
  for (const DrawItem& item : drawn.items) m_touched.add(touchedPixels(item, viewport));
  return m_image;
}

}  // namespace runtime
