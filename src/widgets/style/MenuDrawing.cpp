#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"

namespace widgets {
namespace {

constexpr int kItemHeight = 26;
constexpr int kItemPadding = 10;
constexpr int kShortcutGap = 28;
constexpr int kSeparatorHeight = 9;

bool hasGlyphColumn(const QStyleOptionMenuItem& option) {
  return option.maxIconWidth > 0 || option.menuHasCheckableItems;
}

struct ItemColours {
  QColor text;
  QColor secondary;
};

ItemColours coloursFor(const QStyleOptionMenuItem& option, bool selected) {
  if (!(option.state & QStyle::State_Enabled)) {
    const QColor off = TYStyleKit::colour(Token::TextDisabled);
    return {off, off};
  }
  if (selected) {
    const QColor on = TYStyleKit::colour(Token::OnAccent);
    return {on, on};
  }
  return {TYStyleKit::colour(Token::Text), TYStyleKit::colour(Token::Text2)};
}

void drawSeparator(const QStyleOptionMenuItem& option, QPainter& painter) {
  const QRectF r = option.rect;
  const QColor line = TYStyleKit::colour(Token::Separator);
  if (option.text.isEmpty()) {
    DevicePixels(painter).horizontal(r.left() + 6, r.right() - 6, r.center().y(), line);
    return;
  }
  painter.setPen(TYStyleKit::colour(Token::Text3));
  painter.drawText(r.adjusted(kItemPadding, 0, -kItemPadding, 0), Qt::AlignLeft | Qt::AlignVCenter,
                   option.text);
}

void drawItemGlyph(const QStyleOptionMenuItem& option, const ItemColours& colours,
                   QPainter& painter) {
  const QRectF box(option.rect.left() + kItemPadding,
                   option.rect.top() + (option.rect.height() - kGlyphSide) / 2.0, kGlyphSide,
                   kGlyphSide);
  if (option.checkType != QStyleOptionMenuItem::NotCheckable) {
    if (!option.checked) return;
    TYGlyph::paint(painter, QStringLiteral("Check"), box, colours.text, 1.3);
  } else if (const TYGlyph* glyph = TYGlyph::named(option.icon.name())) {
    glyph->paint(painter, box, colours.secondary);
  } else if (!option.icon.isNull()) {
    option.icon.paint(&painter, box.toRect(), Qt::AlignCenter,
                      option.state & QStyle::State_Enabled ? QIcon::Normal : QIcon::Disabled);
  }
}

}  // namespace

void drawMenuPanel(const QRectF& rect, QPainter& painter) {
  DevicePixels(painter).box(rect, TYStyleKit::colour(Token::Raised),
                            TYStyleKit::colour(Token::Border), kPanelRadius);
}

void drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter, Qt::TextFlag mnemonics) {
  if (option.menuItemType == QStyleOptionMenuItem::Separator) {
    drawSeparator(option, painter);
    return;
  }
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool selected = enabled && (option.state & QStyle::State_Selected);
  const ItemColours colours = coloursFor(option, selected);
  if (selected)
    DevicePixels(painter).fill(option.rect, TYStyleKit::colour(Token::AccentFill), kControlRadius);
  drawItemGlyph(option, colours, painter);

  QRect text = option.rect.adjusted(kItemPadding, 0, -kItemPadding, 0);
  if (hasGlyphColumn(option)) text.setLeft(text.left() + kGlyphSide + kItemPadding);
  const QStringList parts = option.text.split(QLatin1Char('\t'));
  painter.setFont(option.font);
  painter.setPen(colours.text);
  painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | mnemonics | Qt::TextSingleLine,
                   parts.constFirst());
  if (parts.size() > 1) {
    painter.setPen(selected || !enabled ? colours.text : TYStyleKit::colour(Token::Text3));
    painter.drawText(text, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, parts.at(1));
  }
  if (option.menuItemType == QStyleOptionMenuItem::SubMenu) {
    const QRectF arrow(text.right() + 1 - kGlyphSide / 2.0 - 2, text.center().y() - 7, kGlyphSide,
                       kGlyphSide);
    TYGlyph::paint(painter, QStringLiteral("DisclosingClosed"), arrow, colours.secondary);
  }
}

QSize menuItemSize(const QStyleOptionMenuItem& option, const QSize& text) {
  if (option.menuItemType == QStyleOptionMenuItem::Separator)
    return {text.width() + 2 * kItemPadding,
            option.text.isEmpty() ? kSeparatorHeight : kItemHeight};
  int width = text.width() + 2 * kItemPadding;
  if (hasGlyphColumn(option)) width += kGlyphSide + kItemPadding;
  if (option.reservedShortcutWidth > 0 || option.text.contains(QLatin1Char('\t')))
    width += kShortcutGap;
  if (option.menuItemType == QStyleOptionMenuItem::SubMenu) width += kGlyphSide;
  return {width, kItemHeight};
}

void drawMenuBarItem(const QStyleOptionMenuItem& option, QPainter& painter,
                     Qt::TextFlag mnemonics) {
  painter.fillRect(option.rect, TYStyleKit::colour(Token::Window));
  const bool enabled = option.state & QStyle::State_Enabled;
  if (enabled && (option.state & (QStyle::State_Selected | QStyle::State_Sunken)))
    DevicePixels(painter).fill(option.rect, TYStyleKit::colour(Token::ControlOn), kControlRadius);
  painter.setPen(TYStyleKit::colour(enabled ? Token::Text : Token::TextDisabled));
  painter.drawText(option.rect, Qt::AlignCenter | mnemonics | Qt::TextSingleLine, option.text);
}

}  // namespace widgets
