#pragma once

#include "runtime/draw/PixelRows.h"
#include "runtime/draw/QuadPainter.h"

namespace runtime {

/// Paints draw lists onto pixels, each item by what suits it best.
class ListPainter {
 public:
  /// The pixels must stay as long as the painter.
  explicit ListPainter(const PixelRows& target);

  void paint(const DrawList& list, const Viewport& viewport);

 private:
  void paintInOrder(const DrawList& list, const Viewport& viewport);
  void paintItem(const ClearItem& clear, const Viewport& viewport);
  void paintItem(const QuadItem& quad, const Viewport& viewport);
  void paintItem(const GradientItem& gradient, const Viewport& viewport);
  void paintItem(const LineItem& line, const Viewport& viewport);
  void paintItem(const MeshItem& mesh, const Viewport& viewport);
  /// Draws what the quad's image was drawn from at its place; false when it has to be the image.
  bool replay(const QuadItem& quad, const Viewport& viewport);

  PixelRows m_target;
  QImage m_picture;
  QPainter m_painter;
  int m_depth = 0;
};

}  // namespace runtime
