#pragma once

#include <QAbstractButton>

#include "widgets/ThemeTokens.h"

namespace preview {

/// A word of the status row that does something when it is clicked.
class RowWord : public QAbstractButton {
  Q_OBJECT

 public:
  explicit RowWord(widgets::Token token, QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  widgets::Token m_token;  ///< while the pointer is elsewhere
};

}  // namespace preview
