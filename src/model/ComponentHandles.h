#pragma once

#include <QRectF>
#include <array>

namespace model {

/// The grips of a component's frame: rectangle 0 is the frame with its margins, 1 to 8 are squares
/// inside it, flush with its edges: lower left, left, upper left, top, bottom, lower right, right,
/// upper right. In picture coordinates (pixels, y up), before rotation; a QRectF's top() is thus
/// the lower edge.
class ComponentHandles {
 public:
  static constexpr double size = 8;  ///< of a grip's side, in pixels of the picture
  static constexpr int noHit = 9;
  static constexpr int body = 0;

  ComponentHandles(const QRectF& frame, double marginX, double marginY);
  [[nodiscard]] std::array<QRectF, 9> rects() const { return m_rects; }  ///< outlives the handles
  /// 0 the body, 1 to 8 a grip, 9 nothing. The point is turned back about the centre first.
  [[nodiscard]] int indexForLocation(const QPointF& location, double degrees) const;

  /// Edges that a grip moves.
  [[nodiscard]] static bool movesTop(int handle);
  [[nodiscard]] static bool movesBottom(int handle);
  [[nodiscard]] static bool movesLeft(int handle);
  [[nodiscard]] static bool movesRight(int handle);

 private:
  std::array<QRectF, 9> m_rects;
};

}  // namespace model
