#pragma once

#include <QRgb>
#include <vector>

#include "runtime/draw/DrawList.h"
#include "runtime/draw/PixelRows.h"
#include "runtime/draw/Viewport.h"

namespace runtime {

/// The colours of a gradient over so many pixels, premultiplied, in the direction in which x or the
/// rows grow. The first colour lies on the edge at the start, not in the middle of its pixel.
class GradientRamp {
 public:
  GradientRamp(const GradientItem& item, const QSize& size);
  [[nodiscard]] bool isHorizontal() const { return m_horizontal; }
  /// Pixel of the destination.
  [[nodiscard]] const QRgb& at(int x, int y) const {
    return m_colors[static_cast<size_t>(m_horizontal ? x : y)];
  }
  /// No pixel shows what was there before.
  [[nodiscard]] static bool coversEverything(const GradientItem& item);

 private:
  bool m_horizontal;
  std::vector<QRgb> m_colors;
};

void paintGradient(const GradientItem& item, const Viewport& viewport, const PixelRows& target);

}  // namespace runtime
