#pragma once

#include <QAbstractSlider>
#include <QGradientStops>

namespace widgets {

/// A slider whose track shows the colours that it leads to, over a chessboard.
class ColorRange : public QAbstractSlider {
  Q_OBJECT
 public:
  static constexpr int kSteps = 1000;

  explicit ColorRange(const QString& name, QWidget* parent = nullptr);

  void setStops(const QGradientStops& stops);
  /// 0…1. Announces nothing.
  void setFraction(double fraction);

 Q_SIGNALS:
  void edited(double fraction);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QGradientStops m_stops;
};

}  // namespace widgets
