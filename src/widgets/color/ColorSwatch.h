#pragma once

#include <QAbstractButton>

namespace widgets {

/// A small square of a colour that can be clicked.
class ColorSwatch : public QAbstractButton {
  Q_OBJECT
 public:
  explicit ColorSwatch(const QColor& color, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor m_color;
};

}  // namespace widgets
