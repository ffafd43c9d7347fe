#pragma once

#include <QObject>
#include <QPointF>

class QMouseEvent;
class QWheelEvent;

namespace preview {

class PreviewView;

/// Moves and zooms the picture with the pointer: dragging and the wheel move it where it is larger
/// than its view, the wheel with Ctrl and pinching zoom about the pointer.
class ViewNavigation : public QObject {
 public:
  /// Owned by the view.
  explicit ViewNavigation(PreviewView& view);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool press(const QMouseEvent& event);
  bool drag(const QMouseEvent& event);
  bool release();
  bool turnWheel(const QWheelEvent& event);
  void zoomStep(int steps, const QPointF& about);
  void showCursor();

  PreviewView& m_view;
  bool m_isDragging = false;
  QPointF m_last;
  double m_wheelTurn = 0;  ///< what is left of the last whole step
};

}  // namespace preview
