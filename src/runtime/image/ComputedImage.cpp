#include "runtime/image/ComputedImage.h"

#include <cstring>

namespace runtime::image {

namespace {

constexpr qint64 largestKept = 16'000'000;
constexpr qint64 largestBitmap = 64'000'000;
constexpr qint64 largestRecent = 4'000'000;
constexpr int deepest = 48;
constexpr qint64 mostWork = 4096;

qint64 pixelCount(const QRect& rect) {
  return qint64{rect.width()} * rect.height();
}

/// Copies the rows that the two areas share.
QImage placed(const QImage& pixels, const QRect& from, const QRect& area) {
  if (from == area) return pixels;
  QImage out(area.size(), QImage::Format_ARGB32_Premultiplied);
  if (out.isNull()) return out;
  out.fill(0);
  const QRect common = from & area;
  if (common.isEmpty() || pixels.isNull()) return out;
  const auto rowOf = [](const QRect& r, int y) { return r.y() + r.height() - 1 - y; };
  for (int y = common.y(); y < common.y() + common.height(); ++y) {
    const auto* source = reinterpret_cast<const QRgb*>(pixels.constScanLine(rowOf(from, y)));
    auto* target = reinterpret_cast<QRgb*>(out.scanLine(rowOf(area, y)));
    std::memcpy(target + common.x() - area.x(), source + common.x() - from.x(),
                static_cast<size_t>(common.width()) * sizeof(QRgb));
  }
  return out;
}

}  // namespace

ComputedImage::ComputedImage(const QRect& extent, bool infinite, const std::vector<Image>& inputs,
                             Render render)
    : m_extent(extent),
      m_infinite(infinite),
      m_hasInputs(!inputs.empty()),
      m_render(std::move(render)) {
  for (const Image& input : inputs) {
    const auto* computed = dynamic_cast<const ComputedImage*>(input.source());
    if (!computed) continue;
    m_depth = std::max(m_depth, computed->m_depth + 1);
    m_work += computed->keepsBitmap() ? 1 : computed->m_work;
  }
}

Image ComputedImage::made(std::unique_ptr<ComputedImage> source) {
  if (source->m_depth > deepest) {
    if (!source->keepsBitmap()) return {};
    // Feedback lengthens the chain in every frame; computing now ends it.
    (void)source->bitmap();
    source->m_depth = 1;
  }
  if (source->m_work > mostWork) return {};
  return Image(std::shared_ptr<const ComputedImage>(std::move(source)));
}

Image ComputedImage::finite(const QRect& extent, const std::vector<Image>& inputs, Render render) {
  if (extent.isEmpty()) return {};
  const QRect cut(extent.x(), extent.y(), std::min(extent.width(), largestSide),
                  std::min(extent.height(), largestSide));
  return made(
      std::unique_ptr<ComputedImage>(new ComputedImage(cut, false, inputs, std::move(render))));
}

Image ComputedImage::infinite(const std::vector<Image>& inputs, Render render) {
  return made(
      std::unique_ptr<ComputedImage>(new ComputedImage({}, true, inputs, std::move(render))));
}

Image ComputedImage::like(const Image& other, const std::vector<Image>& inputs, Render render) {
  return other.isInfinite() ? infinite(inputs, std::move(render))
                            : finite(other.extent(), inputs, std::move(render));
}

bool ComputedImage::keepsBitmap() const {
  return !m_infinite && pixelCount(m_extent) <= largestKept;
}

const QImage& ComputedImage::bitmap() const {
  std::call_once(m_once, [this] {
    if (m_infinite || pixelCount(m_extent) > largestBitmap) return;
    m_whole = m_render(m_extent);
    if (keepsBitmap()) m_render = nullptr;
  });
  return m_whole;
}

QImage ComputedImage::render(const QRect& area) const {
  if (!m_hasInputs || pixelCount(area) > largestRecent) return m_render(area);
  {
    const std::lock_guard lock(m_mutex);
    for (const auto& [rect, image] : m_recent)
      if (rect == area) return image;
  }
  QImage image = m_render(area);
  const std::lock_guard lock(m_mutex);
  if (m_recent.size() == 2) m_recent.erase(m_recent.begin());
  m_recent.emplace_back(area, image);
  return image;
}

QImage ComputedImage::pixels(const QRect& area) const {
  if (area.isEmpty() || pixelCount(area) > largestBitmap) return {};
  if (keepsBitmap()) return placed(bitmap(), m_extent, area);
  const QRect inside = m_infinite ? area : area & m_extent;
  return placed(inside.isEmpty() ? QImage() : render(inside), inside, area);
}

QRect pixelRect(const QRectF& rect) {
  static constexpr double far = 1e6;
  const auto edge = [](double v) { return std::isnan(v) ? 0 : std::clamp(v, -far, far); };
  const int x0 = static_cast<int>(std::floor(edge(rect.left()) + 1e-6));
  const int y0 = static_cast<int>(std::floor(edge(rect.top()) + 1e-6));
  const int x1 = static_cast<int>(std::ceil(edge(rect.left() + rect.width()) - 1e-6));
  const int y1 = static_cast<int>(std::ceil(edge(rect.top() + rect.height()) - 1e-6));
  return {x0, y0, std::max(x1 - x0, 0), std::max(y1 - y0, 0)};
}

Image cropped(const Image& image, const QRect& rect) {
  if (image.isNull()) return {};
  if (!image.isInfinite() && rect.contains(image.extent())) return image;
  const QRect area = image.isInfinite() ? rect : rect & image.extent();
  return ComputedImage::finite(area, {image}, [image](const QRect& a) { return image.pixels(a); });
}

}  // namespace runtime::image
