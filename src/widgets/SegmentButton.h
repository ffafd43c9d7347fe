#pragma once

#include <QAbstractButton>

#include "widgets/ThemeTokens.h"

namespace widgets {

/// One segment of a TYSegmentedControl; the control draws the edge around all of them.
class SegmentButton : public QAbstractButton {
  Q_OBJECT
 public:
  explicit SegmentButton(QWidget* parent);

  void setGlyph(const QString& glyph);
  void setOnToken(Token token);
  /// Drawn as if it were on.
  void setHighlighted(bool highlighted);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString m_glyph;
  Token m_onToken = Token::Text;
  bool m_highlighted = false;
};

}  // namespace widgets
