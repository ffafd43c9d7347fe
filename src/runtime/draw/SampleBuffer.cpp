#include "runtime/draw/SampleBuffer.h"

#include <cmath>

namespace runtime {

namespace {

/// Places within the pixel: a rotated grid, so that steep and flat edges are smoothed alike.
constexpr std::array<double, 4> placesX{0.375, 0.875, 0.125, 0.625};
constexpr std::array<double, 4> placesY{0.125, 0.375, 0.625, 0.875};

/// Surfaces in the same plane count as equally near although their arithmetic differs a little;
/// later ones then win, as with "less or equal".
constexpr float equalNearness = 1.0F - 8e-6F;

/// Fragments that are as good as invisible do not hide what comes after them.
constexpr int invisibleAlpha = 2;

QRgb meanOfFour(const QRgb* samples) {
  if (samples[0] == samples[1] && samples[0] == samples[2] && samples[0] == samples[3])
    return samples[0];
  quint32 low = 0x00020002U;
  quint32 high = 0x00020002U;
  for (int i = 0; i < 4; ++i) {
    low += samples[i] & 0x00FF00FFU;
    high += (samples[i] >> 8) & 0x00FF00FFU;
  }
  return ((low >> 2) & 0x00FF00FFU) | ((high << 6) & 0xFF00FF00U);
}

}  // namespace

void SampleBuffer::load(const PixelRows& target, const QRect& area) {
  m_area = area;
  const size_t pixels = static_cast<size_t>(area.width()) * static_cast<size_t>(area.height());
  m_colors.resize(pixels * count);
  m_nearness.assign(pixels * count, 0.0F);
  QRgb* out = m_colors.data();
  for (int y = area.top(); y <= area.bottom(); ++y) {
    const QRgb* row = target.row(y) + area.left();
    for (int x = 0; x < area.width(); ++x, out += count) std::fill_n(out, count, row[x]);
  }
}

void SampleBuffer::store(const PixelRows& target) const {
  const QRgb* in = m_colors.data();
  for (int y = m_area.top(); y <= m_area.bottom(); ++y) {
    QRgb* row = target.row(y) + m_area.left();
    for (int x = 0; x < m_area.width(); ++x, in += count) row[x] = meanOfFour(in);
  }
}

void SampleBuffer::clearDepth() {
  std::fill(m_nearness.begin(), m_nearness.end(), 0.0F);
}

void SampleBuffer::blendPixel(int x, int y, QRgb color, Blending blending) {
  QRgb* samples = &m_colors[indexOf(x, y)];
  for (int i = 0; i < count; ++i) samples[i] = blended(samples[i], color, blending);
}

void SampleBuffer::fill(const Surface& surface, const Polygon& polygon) {
  const int top = std::max(m_area.top(), static_cast<int>(std::floor(polygon.top())));
  const int bottom = std::min(m_area.bottom(), static_cast<int>(std::ceil(polygon.bottom())));
  for (int y = top; y <= bottom; ++y) fillRow(surface, polygon, y);
}

float SampleBuffer::depthAt(const Surface& surface, const Polygon& polygon, int x, int y,
                            size_t sample) {
  return static_cast<float>(polygon.nearness().at(x + placesX[sample], y + placesY[sample])) /
         surface.eyeDistance;
}

unsigned SampleBuffer::visibleSamples(const Surface& surface, const Polygon& polygon,
                                      const std::array<Span, count>& spans, int x, int y) const {
  const size_t first = indexOf(x, y);
  unsigned visible = 0;
  for (size_t i = 0; i < count; ++i) {
    const double place = x + placesX[i];
    if (spans[i].isEmpty || place < spans[i].left || place >= spans[i].right) continue;
    if (surface.depth != DepthTesting::None &&
        depthAt(surface, polygon, x, y, i) < m_nearness[first + i] * equalNearness)
      continue;
    visible |= 1U << i;
  }
  return visible;
}

void SampleBuffer::fillRow(const Surface& surface, const Polygon& polygon, int y) {
  std::array<Span, count> spans;
  double left = m_area.right() + 1.0;
  double right = m_area.left();
  for (size_t i = 0; i < count; ++i) {
    Span& span = spans[i];
    span.isEmpty = !polygon.spanAt(y + placesY[i], span.left, span.right);
    if (span.isEmpty) continue;
    left = std::min(left, span.left);
    right = std::max(right, span.right);
  }
  const int first = std::max(m_area.left(), static_cast<int>(std::floor(left)));
  const int last = std::min(m_area.right(), static_cast<int>(std::floor(right)));
  for (int x = first; x <= last; ++x) {
    const unsigned visible = visibleSamples(surface, polygon, spans, x, y);
    if (visible == 0) continue;
    const QRgb color = surface.colorAt(polygon, x + 0.5, y + 0.5);
    if (surface.blending != Blending::Replace && qAlpha(color) <= invisibleAlpha) continue;
    const size_t index = indexOf(x, y);
    for (size_t i = 0; i < count; ++i) {
      if (!(visible & (1U << i))) continue;
      blendOnto(m_colors[index + i], color, surface.blending, surface.writtenBits, 256);
      if (surface.depth == DepthTesting::ReadWrite)
        m_nearness[index + i] = depthAt(surface, polygon, x, y, i);
    }
  }
}

}  // namespace runtime
