#pragma once

#include <QIconEngine>

#include "widgets/TYGlyph.h"
#include "widgets/ThemeTokens.h"

namespace widgets {

/// Paints a glyph in the colour of the icon's mode and state.
class GlyphIconEngine : public QIconEngine {
 public:
  GlyphIconEngine(QString name, const TYGlyph& glyph, Token atRest);

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                       qreal scale) override;
  [[nodiscard]] QIconEngine* clone() const override { return new GlyphIconEngine(*this); }
  QString iconName() override { return m_name; }
  bool isNull() override { return false; }

 private:
  QString m_name;
  const TYGlyph& m_glyph;
  Token m_atRest;
};

}  // namespace widgets
