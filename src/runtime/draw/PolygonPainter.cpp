#include "runtime/draw/PolygonPainter.h"

#include <cmath>

namespace runtime {

namespace {

constexpr int subRows = 16;

/// What a polygon covers of one row of pixels.
class RowCoverage {
 public:
  RowCoverage(const Polygon& polygon, int y) {
    for (int i = 0; i < subRows; ++i) {
      Span span;
      if (!polygon.spanAt(y + (i + 0.5) / subRows, span.left, span.right)) continue;
      m_left = m_count == 0 ? span.left : std::min(m_left, span.left);
      m_right = m_count == 0 ? span.right : std::max(m_right, span.right);
      m_innerLeft = m_count == 0 ? span.left : std::max(m_innerLeft, span.left);
      m_innerRight = m_count == 0 ? span.right : std::min(m_innerRight, span.right);
      m_spans[static_cast<size_t>(m_count++)] = span;
    }
  }
  [[nodiscard]] bool isEmpty() const { return m_count == 0; }
  [[nodiscard]] double left() const { return m_left; }
  [[nodiscard]] double right() const { return m_right; }
  /// 0…256 of the pixel.
  [[nodiscard]] int at(int x) const {
    if (m_count == subRows && x >= m_innerLeft && x + 1 <= m_innerRight) return 256;
    double sum = 0;
    for (int i = 0; i < m_count; ++i) {
      const Span& span = m_spans[static_cast<size_t>(i)];
      sum += std::max(0.0, std::min(span.right, x + 1.0) - std::max(span.left, double(x)));
    }
    return static_cast<int>(sum * 256 / subRows + 0.5);
  }

 private:
  struct Span {
    double left = 0;
    double right = 0;
  };
  std::array<Span, subRows> m_spans;
  int m_count = 0;
  double m_left = 0;
  double m_right = 0;
  double m_innerLeft = 0;
  double m_innerRight = 0;
};

void fill(const Surface& surface, const Polygon& polygon, const QRect& clip,
          const PixelRows& target) {
  const int top = std::max(clip.top(), static_cast<int>(std::floor(polygon.top())));
  const int bottom = std::min(clip.bottom(), static_cast<int>(std::ceil(polygon.bottom())));
  for (int y = top; y <= bottom; ++y) {
    const RowCoverage covered(polygon, y);
    if (covered.isEmpty()) continue;
    const int left = std::max(clip.left(), static_cast<int>(std::floor(covered.left())));
    const int right = std::min(clip.right(), static_cast<int>(std::ceil(covered.right())));
    QRgb* row = target.row(y);
    for (int x = left; x <= right; ++x) {
      const int coverage = covered.at(x);
      if (coverage == 0) continue;
      blendOnto(row[x], surface.colorAt(polygon, x + 0.5, y + 0.5), surface.blending,
                surface.writtenBits, coverage);
    }
  }
}

}  // namespace

void paintSurface(const Surface& surface, const QRect& clip, const PixelRows& target) {
  for (const Polygon& polygon : surface.polygons) fill(surface, polygon, clip, target);
}

}  // namespace runtime
