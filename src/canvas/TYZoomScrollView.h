#pragma once

#include <QScrollArea>

namespace canvas {

class CanvasRuler;
class CompositionView;

/// Scrolls the canvas between two rulers and gives it its size.
class TYZoomScrollView : public QScrollArea {
  Q_OBJECT
 public:
  explicit TYZoomScrollView(QWidget* parent = nullptr);

  /// Takes the view over.
  void setDocumentView(CompositionView* view);
  [[nodiscard]] CompositionView* documentView() const { return m_view; }
  /// Gives the view the size that its zoomed picture needs.
  void updateDocumentView();
  /// Tells the rulers where the picture begins and what is selected.
  void updateRulers();
  [[nodiscard]] CanvasRuler& horizontalRuler() { return *m_horizontal; }
  [[nodiscard]] CanvasRuler& verticalRuler() { return *m_vertical; }

  /// Sets the zoom so that the point of the view stays where it is on the screen.
  void zoomAround(const QPointF& viewPoint, qint32 zoomMode);
  void scrollBy(const QPointF& points);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void followFrame();

  CompositionView* m_view = nullptr;
  CanvasRuler* m_horizontal;
  CanvasRuler* m_vertical;
  QWidget* m_corner;
};

}  // namespace canvas
