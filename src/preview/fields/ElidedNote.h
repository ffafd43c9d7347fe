#pragma once

#include <QWidget>

#include "widgets/ThemeTokens.h"

namespace preview {

/// A small secondary line that ends in "…" where there is no room for it.
class ElidedNote : public QWidget {
  Q_OBJECT

 public:
  explicit ElidedNote(QWidget* parent = nullptr);

  void setText(const QString& text);
  [[nodiscard]] const QString& text() const { return m_text; }
  void setToken(widgets::Token token);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString m_text;
  widgets::Token m_token = widgets::Token::Text3;
};

}  // namespace preview
