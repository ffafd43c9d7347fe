#pragma once

#include <QRect>
#include <array>
#include <vector>

#include "runtime/draw/PixelRows.h"
#include "runtime/draw/Surface.h"

namespace runtime {

/// Colour and depth of an area of the picture at four places of every pixel, so that surfaces which
/// hide or cut one another get smooth edges.
class SampleBuffer {
 public:
  /// Takes over the pixels of the area; nothing lies before them.
  void load(const PixelRows& target, const QRect& area);
  /// Writes the means of the samples back.
  void store(const PixelRows& target) const;

  void clearDepth();
  /// Blends a colour onto all samples of a pixel (of the picture).
  void blendPixel(int x, int y, QRgb color, Blending blending);
  void fill(const Surface& surface, const Polygon& polygon);

  [[nodiscard]] const QRect& area() const { return m_area; }

 private:
  static constexpr int count = 4;
  struct Span {
    double left = 0;
    double right = 0;
    bool isEmpty = true;
  };
  [[nodiscard]] size_t indexOf(int x, int y) const {
    return (static_cast<size_t>(y - m_area.top()) * static_cast<size_t>(m_area.width()) +
            static_cast<size_t>(x - m_area.left())) *
           count;
  }
  void fillRow(const Surface& surface, const Polygon& polygon, int y);
  /// Which of the pixel's samples the polygon covers and depth lets through, as bits.
  [[nodiscard]] unsigned visibleSamples(const Surface& surface, const Polygon& polygon,
                                        const std::array<Span, count>& spans, int x, int y) const;
  [[nodiscard]] static float depthAt(const Surface& surface, const Polygon& polygon, int x, int y,
                                     size_t sample);

  QRect m_area;
  std::vector<QRgb> m_colors;
  std::vector<float> m_nearness;  ///< 1 / distance from the eye; 0 is nothing there
};

}  // namespace runtime
