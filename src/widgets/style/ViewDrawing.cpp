#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"

namespace widgets {
namespace {

constexpr int kHeaderPadding = 8;

// One outline around all cells of a row: the edges between them fall outside the clip.
void drawOutline(const QStyleOptionViewItem& option, QPainter& painter) {
  using Position = QStyleOptionViewItem::ViewItemPosition;
  const Position at = option.viewItemPosition;
  const int before = at == QStyleOptionViewItem::Middle || at == QStyleOptionViewItem::End ? 4 : 0;
  const int after =
      at == QStyleOptionViewItem::Middle || at == QStyleOptionViewItem::Beginning ? 4 : 0;
  painter.save();
  painter.setClipRect(option.rect, Qt::IntersectClip);
  const DevicePixels pixels(painter);
  pixels.edge(QRectF(option.rect).adjusted(-before, 0, after, 0), TYStyleKit::colour(Token::Accent),
              0, 2 / pixels.hairline());
  painter.restore();
}

}  // namespace

void drawTabShape(const QStyleOptionTab& option, QPainter& painter) {
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool selected = option.state & QStyle::State_Selected;
  const bool hovered = enabled && (option.state & QStyle::State_MouseOver);
  if (!selected && !hovered) return;
  DevicePixels(painter).fill(QRectF(option.rect).adjusted(1, 2, -1, -2),
                             TYStyleKit::colour(selected ? Token::ControlOn : Token::ControlHover),
                             kControlRadius);
}

void drawTabLabel(const QStyleOptionTab& option, QPainter& painter) {
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool selected = option.state & QStyle::State_Selected;
  painter.setFont(TYStyleKit::font(selected ? TextStyle::Medium : TextStyle::Body));
  painter.setPen(TYStyleKit::colour(!enabled   ? Token::TextDisabled
                                    : selected ? Token::Text
                                               : Token::Text2));
  painter.drawText(option.rect, Qt::AlignCenter | Qt::TextShowMnemonic, option.text);
}

void drawHeaderSection(const QStyleOptionHeader& option, QPainter& painter) {
  const QRectF r = option.rect;
  const bool hovered =
      (option.state & QStyle::State_MouseOver) && (option.state & QStyle::State_Enabled);
  painter.fillRect(option.rect, TYStyleKit::colour(hovered ? Token::ControlHover : Token::Raised));
  const QColor line = TYStyleKit::colour(Token::Separator);
  const DevicePixels pixels(painter);
  if (option.orientation == Qt::Horizontal) {
    pixels.horizontal(r.left(), r.right(), r.bottom() - pixels.hairline(), line);
    const bool last = option.position == QStyleOptionHeader::End ||
                      option.position == QStyleOptionHeader::OnlyOneSection;
    if (!last) pixels.vertical(r.right() - pixels.hairline(), r.top() + 4, r.bottom() - 4, line);
  } else {
    pixels.vertical(r.right() - pixels.hairline(), r.top(), r.bottom(), line);
    pixels.horizontal(r.left(), r.right(), r.bottom() - pixels.hairline(), line);
  }
}

void drawHeaderLabel(const QStyleOptionHeader& option, QPainter& painter) {
  QRect text = option.rect.adjusted(kHeaderPadding, 0, -kHeaderPadding, 0);
  const QColor colour =
      TYStyleKit::colour(option.state & QStyle::State_Enabled ? Token::Text2 : Token::TextDisabled);
  if (option.sortIndicator != QStyleOptionHeader::None) {
    const QRectF arrow(text.right() - 11, text.center().y() - 5, 12, 12);
    painter.save();
    painter.translate(arrow.center());
    if (option.sortIndicator == QStyleOptionHeader::SortUp) painter.scale(1, -1);
    TYGlyph::paint(painter, QStringLiteral("Down"), arrow.translated(-arrow.center()), colour);
    painter.restore();
    text.setRight(text.right() - 14);
  }
  painter.setFont(TYStyleKit::font(TextStyle::SmallMedium));
  painter.setPen(colour);
  painter.drawText(
      text, int(option.textAlignment | Qt::AlignVCenter) | Qt::TextSingleLine,
      QFontMetrics(painter.font()).elidedText(option.text, Qt::ElideRight, text.width()));
}

void drawRow(const QStyleOptionViewItem& option, QPainter& painter, bool wholeRow) {
  const DevicePixels pixels(painter);
  const bool selected = option.state & QStyle::State_Selected;
  if (wholeRow && (option.features & QStyleOptionViewItem::Alternate))
    pixels.fill(option.rect, option.palette.color(QPalette::AlternateBase));
  if (!wholeRow && option.backgroundBrush.style() != Qt::NoBrush)
    painter.fillRect(option.rect, option.backgroundBrush);
  if (selected) {
    pixels.fill(option.rect, TYStyleKit::colour(Token::SelectionRow));
    if (TYStyleKit::shared().theme().highContrast && !wholeRow) drawOutline(option, painter);
  }
}

void drawDockTitle(const QStyleOptionDockWidget& option, QPainter& painter) {
  painter.fillRect(option.rect, TYStyleKit::colour(Token::Raised));
  const DevicePixels pixels(painter);
  const QRectF r = option.rect;
  pixels.horizontal(r.left(), r.right(), r.bottom() - pixels.hairline(),
                    TYStyleKit::colour(Token::Separator));
  painter.setFont(TYStyleKit::font(TextStyle::Title));
  painter.setPen(TYStyleKit::colour(Token::Text));
  painter.drawText(option.rect.adjusted(12, 0, -12, 0), Qt::AlignLeft | Qt::AlignVCenter,
                   option.title);
}

}  // namespace widgets
