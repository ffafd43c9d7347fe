#include "widgets/SegmentButton.h"

#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace widgets {
namespace {

constexpr int kHeight = 24;
constexpr int kNarrowest = 24;
constexpr double kRadius = 4;
constexpr double kGlyph = 16;

}  // namespace

SegmentButton::SegmentButton(QWidget* parent) : QAbstractButton(parent) {
  setAttribute(Qt::WA_Hover);
  setFont(TYStyleKit::font(TextStyle::Body));
}

void SegmentButton::setGlyph(const QString& glyph) {
  m_glyph = glyph;
  update();
}

void SegmentButton::setOnToken(Token token) {
  m_onToken = token;
  update();
}

void SegmentButton::setHighlighted(bool highlighted) {
  m_highlighted = highlighted;
  update();
}

QSize SegmentButton::sizeHint() const {
  if (!m_glyph.isEmpty()) return {27, kHeight};
  // As wide as its chosen face, so that choosing moves nothing.
  const QFontMetrics metrics(TYStyleKit::font(TextStyle::Medium));
  return {std::max(kNarrowest, metrics.horizontalAdvance(text()) + 16), kHeight};
}

void SegmentButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  // Each segment paints its part of the ground and edge that they have in common.
  const QRect whole = parentWidget()->rect().translated(-pos());
  const bool hovered = isEnabled() && underMouse();
  const bool isOn = isChecked() || m_highlighted;
  const Token ground = isDown()  ? Token::ControlPressed
                       : isOn    ? Token::ControlOn
                       : hovered ? Token::ControlHover
                                 : Token::Control;
  const bool outlined = parentWidget()->isEnabled();
  const DevicePixels pixels(painter);
  pixels.box(whole, TYStyleKit::colour(ground), Qt::transparent, kRadius);
  if (pos().x() > 0) pixels.vertical(0, 1, height() - 1, TYStyleKit::colour(Token::Separator));
  pixels.edge(whole, TYStyleKit::colour(outlined ? Token::Border : Token::Separator), kRadius);

  const bool glyphAlone = !m_glyph.isEmpty() && !isCheckable();
  const Token rest = glyphAlone ? Token::Text : Token::Text2;
  const Token token = !isEnabled() ? Token::TextDisabled : isOn ? m_onToken : rest;
  if (!m_glyph.isEmpty()) {
    QRectF box(0, 0, kGlyph, kGlyph);
    box.moveCenter(QRectF(rect()).center());
    TYGlyph::paint(painter, m_glyph, box, TYStyleKit::colour(token));
    return;
  }
  painter.setFont(isChecked() ? TYStyleKit::font(TextStyle::Medium) : font());
  painter.setPen(TYStyleKit::colour(token));
  painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic,
                   painter.fontMetrics().elidedText(text(), Qt::ElideRight, width() - 4));
}

}  // namespace widgets
