#pragma once

#include <QImage>
#include <QPointer>

#include "canvas/CanvasGeometry.h"
#include "store/Observation.h"

class QPainter;

namespace model {
class Composition;
}

namespace canvas {

/// The lowest layer of the canvas: what is around the picture, the picture's shadow and edge, and
/// its background. A background movie is shown by its first picture.
class DrawingAreaLayer {
 public:
  /// Calls back whenever the background looks different.
  DrawingAreaLayer(model::Composition& composition, std::function<void()> changed);

  /// Takes the background over from the composition.
  void updateBackground();
  /// The pattern behind a picture without background, of so many pixels.
  [[nodiscard]] static QImage chessBoardPattern(int width, int height);

  /// Everything of the view, in its logical pixels.
  void paint(QPainter& painter, const CanvasGeometry& geometry) const;
  /// Covers what lies around the picture, so that only what will be on air stands out.
  static void paintVeil(QPainter& painter, const CanvasGeometry& geometry);

 private:
  void paintBackground(QPainter& painter, const QRectF& frame) const;

  model::Composition& m_composition;
  std::function<void()> m_changed;
  std::vector<store::Subscription> m_observations;
  enum class Contents { ChessBoard, Color, Image };
  Contents m_contents = Contents::ChessBoard;
  QColor m_color;
  QImage m_image;
};

}  // namespace canvas
