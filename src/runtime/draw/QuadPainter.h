#pragma once

#include <QPainter>

#include "runtime/draw/DrawList.h"
#include "runtime/draw/ItemGeometry.h"

namespace runtime {

/// Paints flat quads with the toolkit's painter. Images that lie 1:1 on whole pixels are copied
/// exactly, others are sampled where they really lie, fractions of pixels included.
class QuadPainter {
 public:
  /// The painter antialiases and samples smoothly; its transformation is left as found.
  explicit QuadPainter(QPainter& painter) : m_painter(painter) {}

  /// False when the painter cannot draw this quad right: see PolygonPainter.
  [[nodiscard]] static bool canPaint(const QuadItem& quad, const QuadCorners& corners);
  void paint(const QuadItem& quad, const QuadCorners& corners, const Viewport& viewport);

  /// The whole pixels that the image covers one to one and upright.
  [[nodiscard]] static std::optional<QRect> exactPlace(const QSize& image,
                                                       const QTransform& toPixels);

 private:
  void fill(const QuadItem& quad, const QTransform& toPixels, const QRect& clip);
  void drawImage(const QuadItem& quad, const QuadCorners& corners, const QTransform& toPixels);

  QPainter& m_painter;
};

}  // namespace runtime
