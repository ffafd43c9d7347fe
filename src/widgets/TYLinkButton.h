#pragma once

#include <QAbstractButton>

namespace widgets {

/// An action written as a word in the accent colour, for rows that tell something.
class TYLinkButton : public QAbstractButton {
  Q_OBJECT
 public:
  explicit TYLinkButton(const QString& text, QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace widgets
