#pragma once

#include <QWidget>

#include "widgets/ThemeTokens.h"

namespace preview {

/// A small secondary line. Where there is no room for it, its first part is shortened in its middle
/// as far as that helps, and the rest ends in "…".
class ElidedNote : public QWidget {
  Q_OBJECT

 public:
  explicit ElidedNote(QWidget* parent = nullptr);

  void setText(const QString& first, const QString& rest = {});
  void setToken(widgets::Token token);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString m_first;
  QString m_rest;
  widgets::Token m_token = widgets::Token::Text3;
};

}  // namespace preview
