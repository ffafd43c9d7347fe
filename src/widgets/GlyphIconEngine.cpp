#include "widgets/GlyphIconEngine.h"

#include <QPainter>

#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

Token token(QIcon::Mode mode, QIcon::State state, Token atRest) {
  if (mode == QIcon::Disabled) return Token::TextDisabled;
  if (state == QIcon::On) return Token::Accent;
  return mode == QIcon::Normal ? atRest : Token::Text;
}

}  // namespace

GlyphIconEngine::GlyphIconEngine(QString name, const TYGlyph& glyph, Token atRest)
    : m_name(std::move(name)), m_glyph(glyph), m_atRest(atRest) {}

void GlyphIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
                            QIcon::State state) {
  m_glyph.paint(*painter, rect, TYStyleKit::colour(token(mode, state, m_atRest)));
}

QPixmap GlyphIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
  return scaledPixmap(size, mode, state, 1);
}

QPixmap GlyphIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                                      qreal scale) {
  QPixmap pixmap(size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  // The glyph chooses its stroke by its logical size.
  painter.scale(scale, scale);
  m_glyph.paint(painter, QRectF(QPointF(), QSizeF(size) / scale),
                TYStyleKit::colour(token(mode, state, m_atRest)));
  return pixmap;
}

}  // namespace widgets
