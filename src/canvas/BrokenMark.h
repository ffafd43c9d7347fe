#pragma once

#include <QRectF>
#include <QString>

class QPainter;

namespace model {
class QuartzComponent;
}

namespace canvas {

/// Stands on the canvas in the place of a component that cannot be drawn.
struct BrokenMark {
  QRectF frame;                                       ///< of the component, picture coordinates
  double degrees = 0;                                 ///< of its rotation, counter-clockwise
  QString name;                                       ///< of its file
  QString reason;                                     ///< in a few words
  const model::QuartzComponent* component = nullptr;  ///< for comparing only

  /// Paints it over the frame's place, in the view's logical pixels.
  void paint(QPainter& painter, const QRectF& place) const;
  /// What a tooltip or a screen reader says.
  [[nodiscard]] QString text() const;
  friend bool operator==(const BrokenMark&, const BrokenMark&) = default;
};

}  // namespace canvas
