#include "runtime/draw/DepthRasterizer.h"

#include "runtime/draw/ItemGeometry.h"

namespace runtime {

namespace {

/// Rows that are drawn at once: their samples should stay in the processor's cache.
constexpr int stripeHeight = 32;

}  // namespace

DepthRasterizer::DepthRasterizer(const DrawList& list, const Viewport& viewport)
    : m_viewport(viewport) {
  for (const DrawItem& item : list.items) {
    m_touched |= touchedPixels(item, viewport);
    if (const auto* clear = std::get_if<ClearItem>(&item))
      m_steps.emplace_back(
          Clear{premultipliedPixel(clamped(clear->color)), clear->clearsColor, clear->clearsDepth});
    else if (const auto* gradient = std::get_if<GradientItem>(&item))
      m_steps.emplace_back(
          Fill{GradientRamp(*gradient, viewport.size), gradient->blending, gradient->clearsDepth});
    else if (const auto* quad = std::get_if<QuadItem>(&item))
      m_steps.emplace_back(Surface::of(*quad, viewport));
    else if (const auto* line = std::get_if<LineItem>(&item))
      m_steps.emplace_back(Surface::of(*line, viewport));
    else if (const auto* mesh = std::get_if<MeshItem>(&item))
      m_steps.emplace_back(Surface::of(*mesh, viewport));
  }
  m_touched &= viewport.area();
}

void DepthRasterizer::paint(const PixelRows& target) const {
  SampleBuffer buffer;
  for (int y = m_touched.top(); y <= m_touched.bottom(); y += stripeHeight) {
    const int height = std::min(stripeHeight, m_touched.bottom() + 1 - y);
    buffer.load(target, {m_touched.left(), y, m_touched.width(), height});
    for (const Step& step : m_steps) std::visit([&](const auto& s) { perform(s, buffer); }, step);
    buffer.store(target);
  }
}

void DepthRasterizer::perform(const Clear& clear, SampleBuffer& buffer) const {
  if (clear.clearsDepth) buffer.clearDepth();
  if (!clear.clearsColor) return;
  const QRect& area = buffer.area();
  for (int y = area.top(); y <= area.bottom(); ++y)
    for (int x = area.left(); x <= area.right(); ++x)
      buffer.blendPixel(x, y, clear.color, Blending::Replace);
}

void DepthRasterizer::perform(const Fill& fill, SampleBuffer& buffer) const {
  if (fill.clearsDepth) buffer.clearDepth();
  const QRect& area = buffer.area();
  const QPoint origin = m_viewport.origin;
  for (int y = area.top(); y <= area.bottom(); ++y)
    for (int x = area.left(); x <= area.right(); ++x)
      buffer.blendPixel(x, y, fill.ramp.at(x - origin.x(), y - origin.y()), fill.blending);
}

void DepthRasterizer::perform(const Surface& surface, SampleBuffer& buffer) const {
  for (const Polygon& polygon : surface.polygons) buffer.fill(surface, polygon);
}

}  // namespace runtime
