#pragma once

#include "widgets/TokenLabel.h"

namespace preview {

/// A line of plain text that ends in "…" where there is no room for all of it.
class ElidedLabel : public widgets::TokenLabel {
  Q_OBJECT

 public:
  ElidedLabel(widgets::TextStyle style, widgets::Token token);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace preview
