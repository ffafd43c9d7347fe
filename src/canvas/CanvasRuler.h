#pragma once

#include <QWidget>

#include "canvas/RulerPainter.h"

namespace canvas {

class CompositionView;

/// A ruler strip along the canvas. Guides are pulled out of it; a double click sets one at its
/// place.
class CanvasRuler : public QWidget {
  Q_OBJECT
 public:
  CanvasRuler(Qt::Orientation orientation, QWidget* parent);

  void setClientView(CompositionView* view) { m_view = view; }
  /// Shows what the view shows; the offset is where the view begins along the strip.
  void follow(const CompositionView& view, double offset);
  void setPointer(const std::optional<double>& position);
  [[nodiscard]] const RulerPainter& painter() const { return m_painter; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void show(const RulerPainter& painter);

  CompositionView* m_view = nullptr;
  RulerPainter m_painter;
};

}  // namespace canvas
