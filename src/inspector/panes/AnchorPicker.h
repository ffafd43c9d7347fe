#pragma once

#include <QWidget>

namespace inspector {

/// Chooses one of nine points of a frame: its corners, the middles of its edges, its centre. The
/// arrow keys move.
class AnchorPicker : public QWidget {
  Q_OBJECT

 public:
  explicit AnchorPicker(QWidget* parent = nullptr);

  /// 0, 0.5 or 1 in either direction, from the lower left corner.
  [[nodiscard]] QPointF fraction() const { return QPointF(m_cell.x(), 2 - m_cell.y()) / 2; }
  /// Column and row from the top left, 0 to 2.
  void setCell(const QPoint& cell);
  [[nodiscard]] QSize sizeHint() const override;

 Q_SIGNALS:
  void anchorChanged();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void updateName();

  QPoint m_cell{0, 2};
};

}  // namespace inspector
