#pragma once

#include <QAbstractButton>

namespace preview {

/// The scale of the picture, as a word of the status row that opens a menu.
class ScaleButton : public QAbstractButton {
  Q_OBJECT

 public:
  explicit ScaleButton(QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace preview
