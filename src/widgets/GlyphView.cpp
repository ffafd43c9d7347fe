#include "widgets/GlyphView.h"

#include <QPainter>

#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace widgets {

GlyphView::GlyphView(QString glyph, int side, Token token, QWidget* parent)
    : QWidget(parent), m_glyph(std::move(glyph)), m_token(token) {
  setFixedSize(side, side);
}

void GlyphView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  TYGlyph::paint(painter, m_glyph, rect(),
                 TYStyleKit::colour(isEnabled() ? m_token : Token::TextDisabled));
}

}  // namespace widgets
