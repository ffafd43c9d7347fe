#pragma once

#include <QImage>
#include <functional>

class QPainter;

namespace canvas {

/// The pattern behind a picture without background: squares in two light greys, symmetric about the
/// vertical centre line. The number of rows follows from the width and the size of the squares from
/// the height.
class ChessBoard {
 public:
  /// For a picture of that many pixels.
  ChessBoard(int width, int height) : m_width(width), m_height(height) {}

  /// Squares of the second colour, in the picture's pixels, y up. Some come twice and some reach
  /// beyond the picture.
  void forEachSquare(const std::function<void(const QRectF&)>& visit) const;
  /// Fills the area (logical pixels) with the whole pattern, edges on whole device pixels.
  void paint(QPainter& painter, const QRectF& area) const;
  [[nodiscard]] QImage image() const;

 private:
  int m_width;
  int m_height;
};

}  // namespace canvas
