#pragma once

#include <QList>
#include <QRectF>
#include <optional>

namespace model {
class Composition;
}

namespace canvas {

/// A guide by its values.
struct GuideLine {
  double position = 0;  ///< pixels of the picture, from the left or from below
  bool horizontal = false;
  friend bool operator==(const GuideLine&, const GuideLine&) = default;
};

/// What a drag was moved by to lie on guides, and on which.
struct Snap {
  QPointF correction;
  std::optional<double> horizontal;  ///< position of the horizontal guide that took it
  std::optional<double> vertical;
};

/// Guides that catch what is dragged near them, in picture coordinates (y up; a QRectF's top() is
/// thus the lower edge). On each axis the first guide of the list within reach wins, not the
/// nearest. Middles are not caught.
class Snapping {
 public:
  static constexpr double reach = 10;  ///< pixels of the picture; exactly that far is too far
  static constexpr double grab = 3;    ///< the same for picking a guide up

  Snapping() = default;
  explicit Snapping(QList<GuideLine> guides) : m_guides(std::move(guides)) {}
  /// The guides of the composition; none while it does not show them.
  [[nodiscard]] static Snapping ofComposition(const model::Composition& composition);

  /// By its edges; the lower and the left one are tried first.
  [[nodiscard]] Snap snapFrame(const QRectF& frame) const;
  [[nodiscard]] Snap snapPoint(const QPointF& point) const;

 private:
  QList<GuideLine> m_guides;
};

}  // namespace canvas
