#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"

namespace widgets {

void drawField(const QRectF& rect, QStyle::State state, bool invalid, QPainter& painter) {
  const bool enabled = state & QStyle::State_Enabled;
  const bool focused = enabled && (state & QStyle::State_HasFocus);
  const bool hovered =
      enabled && !focused && (state & QStyle::State_MouseOver) && !(state & QStyle::State_ReadOnly);
  const Token edge = !enabled ? Token::Separator : invalid ? Token::Broken : Token::Border;
  const DevicePixels pixels(painter);
  const QColor fill = TYStyleKit::colour(hovered ? Token::ControlHover : Token::Field);
  if (!focused) {
    pixels.box(rect, fill, TYStyleKit::colour(edge), kControlRadius);
    return;
  }
  pixels.box(rect, fill, Qt::transparent, kControlRadius);
  const QColor ring = TYStyleKit::colour(invalid ? Token::Broken : Token::Accent);
  pixels.edge(rect, ring, kControlRadius, 2 / pixels.hairline());
}

void drawComboBox(const QStyleOptionComboBox& option, QPainter& painter) {
  const bool enabled = option.state & QStyle::State_Enabled;
  const DevicePixels pixels(painter);
  if (option.editable) {
    drawField(option.rect, option.state, false, painter);
  } else {
    const bool open = option.state & (QStyle::State_Sunken | QStyle::State_On);
    const bool hovered = enabled && (option.state & QStyle::State_MouseOver);
    const Token ground = open      ? Token::ControlPressed
                         : hovered ? Token::ControlHover
                                   : Token::Control;
    pixels.box(option.rect, TYStyleKit::colour(ground),
               TYStyleKit::colour(enabled ? Token::Border : Token::Separator), kControlRadius);
  }
  const QRectF arrow(option.rect.right() - 3 - kGlyphSide, option.rect.center().y() - 7, kGlyphSide,
                     kGlyphSide);
  TYGlyph::paint(painter, QStringLiteral("UpDown"), arrow,
                 TYStyleKit::colour(enabled ? Token::Text2 : Token::TextDisabled));
}

void drawComboBoxLabel(const QStyleOptionComboBox& option, QPainter& painter) {
  if (option.editable) return;
  const bool enabled = option.state & QStyle::State_Enabled;
  QRect text = option.rect.adjusted(9, 0, -(kGlyphSide + 8), 0);
  if (!option.currentIcon.isNull()) {
    const QRect icon(text.left(), text.center().y() - 7, kGlyphSide, kGlyphSide);
    option.currentIcon.paint(&painter, icon, Qt::AlignCenter,
                             enabled ? QIcon::Normal : QIcon::Disabled);
    text.setLeft(icon.right() + 7);
  }
  painter.setPen(TYStyleKit::colour(enabled ? Token::Text : Token::TextDisabled));
  painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
                   option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, text.width()));
}

void drawSpinBox(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget) {
  const bool invalid = widget && widget->property("invalid").toBool();
  drawField(option.rect, option.state, invalid, painter);
  const bool enabled = option.state & QStyle::State_Enabled;
  const QRectF arrows(option.rect.right() - 2 - kGlyphSide, option.rect.center().y() - 7,
                      kGlyphSide, kGlyphSide);
  TYGlyph::paint(painter, QStringLiteral("UpDown"), arrows,
                 TYStyleKit::colour(enabled ? Token::Text2 : Token::TextDisabled));
}

}  // namespace widgets
