#include "runtime/draw/ListPainter.h"

#include "runtime/draw/DepthOrder.h"
#include "runtime/draw/DepthRasterizer.h"
#include "runtime/draw/DrawnImage.h"
#include "runtime/draw/Gradient.h"
#include "runtime/draw/PolygonPainter.h"

namespace runtime {

namespace {

/// Images drawn from images drawn from images … deeper ones are drawn as images.
constexpr int deepestReplay = 16;

bool isInvisible(const QuadItem& quad) {
  return !(quad.color.alpha > 0) && quad.state.blending != Blending::Replace;
}

}  // namespace

ListPainter::ListPainter(const PixelRows& target)
    : m_target(target), m_picture(target.asImage()), m_painter(&m_picture) {
  m_painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
}

void ListPainter::paint(const DrawList& list, const Viewport& viewport) {
  if (paintersOrderSuffices(list))
    paintInOrder(list, viewport);
  else
    DepthRasterizer(list, viewport).paint(m_target);
}

void ListPainter::paintInOrder(const DrawList& list, const Viewport& viewport) {
  Viewport inside = viewport;
  inside.clip = viewport.area();
  if (inside.clip.isEmpty()) return;
  m_painter.setClipRect(inside.clip);
  for (const DrawItem& item : list.items) {
    if (touchedPixels(item, inside).isEmpty()) continue;
    std::visit([&](const auto& i) { paintItem(i, inside); }, item);
  }
}

void ListPainter::paintItem(const ClearItem& clear, const Viewport& viewport) {
  m_painter.setCompositionMode(QPainter::CompositionMode_Source);
  m_painter.fillRect(viewport.clip, clamped(clear.color).toQColor());
}

void ListPainter::paintItem(const QuadItem& quad, const Viewport& viewport) {
  if (isInvisible(quad)) return;
  const auto corners = QuadCorners::of(quad.matrix, quad.state.eyeDistance, viewport);
  if (!corners) return;
  if (!QuadPainter::canPaint(quad, *corners)) {
    paintSurface(Surface::of(quad, viewport), viewport.clip, m_target);
    return;
  }
  const QSizeF size = corners->pixelSize();
  if (!(size.width() > 1e-6) || !(size.height() > 1e-6)) return;
  if (isCulled(quad.state.culling, corners->facesEye())) return;
  if (replay(quad, viewport)) return;
  QuadPainter(m_painter).paint(quad, *corners, viewport);
}

void ListPainter::paintItem(const GradientItem& gradient, const Viewport& viewport) {
  paintGradient(gradient, viewport, m_target);
}

void ListPainter::paintItem(const LineItem& line, const Viewport& viewport) {
  paintSurface(Surface::of(line, viewport), viewport.clip, m_target);
}

void ListPainter::paintItem(const MeshItem& mesh, const Viewport& viewport) {
  DrawList alone;
  alone.items.emplace_back(mesh);
  DepthRasterizer(alone, viewport).paint(m_target);
}

bool ListPainter::replay(const QuadItem& quad, const Viewport& viewport) {
  const auto* drawn = dynamic_cast<const DrawnImage*>(quad.image.source());
  if (!drawn || !drawn->canBeReplayed() || m_depth >= deepestReplay) return false;
  const foundation::Color color = clamped(quad.color);
  if (quad.state.blending != Blending::Over || !quad.mask.isNull() || color.red != 1 ||
      color.green != 1 || color.blue != 1)
    return false;
  const QSize size = drawn->extent().size();
  const auto place =
      QuadPainter::exactPlace(size, pixelTransform(quad.matrix, quad.state.eyeDistance, viewport));
  if (!place) return false;
  const auto list = drawn->replay(color.alpha);
  if (!list) return false;
  ++m_depth;
  paintInOrder(*list, {size, place->topLeft(), viewport.clip & *place});
  --m_depth;
  m_painter.setClipRect(viewport.clip);
  return true;
}

}  // namespace runtime
