#pragma once

#include <QImage>
#include <QWidget>

namespace widgets {

/// All saturations (to the right) and values (upwards) of one hue. The arrow keys move by a
/// hundredth, with Shift by a tenth.
class ColorPlane : public QWidget {
  Q_OBJECT
 public:
  explicit ColorPlane(QWidget* parent = nullptr);

  /// All 0…1. Announces nothing.
  void setColor(double hue, double saturation, double value);

 Q_SIGNALS:
  void edited(double saturation, double value);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void moveTo(double saturation, double value);
  [[nodiscard]] const QImage& plane();

  double m_hue = 0;
  double m_saturation = 0;
  double m_value = 1;
  QImage m_plane;
};

}  // namespace widgets
