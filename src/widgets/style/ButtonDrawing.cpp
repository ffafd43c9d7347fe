#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"

namespace widgets {
namespace {

constexpr int kGap = 6;
constexpr int kToolWidth = 52;
constexpr int kToolHeight = 48;
constexpr int kToolLabelHeight = 14;
constexpr int kToolArrow = 12;

Token ground(QStyle::State state) {
  if (!(state & QStyle::State_Enabled)) return Token::Control;
  if (state & QStyle::State_Sunken) return Token::ControlPressed;
  if (state & QStyle::State_On) return Token::ControlOn;
  return state & QStyle::State_MouseOver ? Token::ControlHover : Token::Control;
}

bool isEmphasised(const QStyleOptionButton& option) {
  return (option.features & QStyleOptionButton::DefaultButton) &&
         (option.state & QStyle::State_Enabled);
}

Token labelToken(const QStyleOptionButton& option) {
  if (!(option.state & QStyle::State_Enabled)) return Token::TextDisabled;
  return isEmphasised(option) ? Token::OnAccent : Token::Text;
}

bool isUnderIcon(const QStyleOptionToolButton& option) {
  return option.toolButtonStyle == Qt::ToolButtonTextUnderIcon;
}

bool showsText(const QStyleOptionToolButton& option) {
  return option.toolButtonStyle != Qt::ToolButtonIconOnly && !option.text.isEmpty();
}

bool showsArrow(const QStyleOptionToolButton& option) {
  return option.features &
         (QStyleOptionToolButton::HasMenu | QStyleOptionToolButton::MenuButtonPopup);
}

void drawToolGround(const QStyleOptionToolButton& option, QPainter& painter) {
  const bool isActive = option.state & (QStyle::State_On | QStyle::State_Sunken);
  const bool isHovered =
      (option.state & QStyle::State_MouseOver) && (option.state & QStyle::State_Enabled);
  const DevicePixels pixels(painter);
  if (!(option.state & QStyle::State_AutoRaise)) {
    const bool enabled = option.state & QStyle::State_Enabled;
    pixels.box(option.rect, TYStyleKit::colour(ground(option.state)),
               TYStyleKit::colour(enabled ? Token::Border : Token::Separator), kControlRadius);
  } else if (isActive || isHovered) {
    pixels.fill(option.rect, TYStyleKit::colour(ground(option.state)), kControlRadius + 1);
  }
}

void drawToolIcon(const QStyleOptionToolButton& option, const QRect& box, QPainter& painter) {
  const bool enabled = option.state & QStyle::State_Enabled;
  const QIcon::State state = option.state & QStyle::State_On ? QIcon::On : QIcon::Off;
  option.icon.paint(&painter, box, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled,
                    state);
}

}  // namespace

void drawPushButtonBevel(const QStyleOptionButton& option, QPainter& painter) {
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool flat = option.features & QStyleOptionButton::Flat;
  const double radius = option.rect.height() > kControlHeight ? kControlRadius + 1 : kControlRadius;
  const DevicePixels pixels(painter);
  if (isEmphasised(option)) {
    QColor fill = TYStyleKit::colour(option.state & QStyle::State_MouseOver ? Token::AccentHover
                                                                            : Token::AccentFill);
    if (option.state & QStyle::State_Sunken) fill = fill.darker(118);
    pixels.fill(option.rect, fill, radius);
  } else if (!flat || (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken))) {
    const QColor edge = TYStyleKit::colour(enabled ? Token::Border : Token::Separator);
    pixels.box(option.rect, TYStyleKit::colour(ground(option.state)),
               flat ? QColor(Qt::transparent) : edge, radius);
  }
}

void drawPushButtonLabel(const QStyleOptionButton& option, QPainter& painter) {
  const QColor colour = TYStyleKit::colour(labelToken(option));
  const bool hasMenu = option.features & QStyleOptionButton::HasMenu;
  const int iconWidth = option.icon.isNull() ? 0 : option.iconSize.width() + kGap;
  const int textWidth = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
  const int arrowWidth = hasMenu ? kToolArrow + 2 : 0;
  int x = option.rect.left() + (option.rect.width() - iconWidth - textWidth - arrowWidth) / 2;
  x = std::max(x, option.rect.left() + 4);
  if (iconWidth) {
    const QRect box(QPoint(x, option.rect.center().y() - option.iconSize.height() / 2 + 1),
                    option.iconSize);
    const TYGlyph* glyph = TYGlyph::named(option.icon.name());
    if (glyph) {
      glyph->paint(painter, box, colour);
    } else {
      option.icon.paint(&painter, box);
    }
    x += iconWidth;
  }
  painter.setPen(colour);
  const QRect textRect(x, option.rect.top(), option.rect.right() - x, option.rect.height());
  painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, option.text);
  if (hasMenu)
    TYGlyph::paint(painter, QStringLiteral("Down"),
                   QRectF(x + textWidth + 2, option.rect.center().y() - 5, kToolArrow, kToolArrow),
                   colour);
}

QSize toolButtonSize(const QStyleOptionToolButton& option) {
  const int text = showsText(option) ? option.fontMetrics.horizontalAdvance(option.text) : 0;
  if (isUnderIcon(option)) return {std::max(kToolWidth, text + 12), kToolHeight};
  int width = option.toolButtonStyle == Qt::ToolButtonTextOnly ? 0 : option.iconSize.width();
  if (text) width += text + (width ? kGap : 0) + 8;
  if (showsArrow(option)) width += kToolArrow;
  return {std::max(kControlHeight, width + 8),
          std::max(kControlHeight, option.iconSize.height() + 8)};
}

void drawToolButton(const QStyleOptionToolButton& option, QPainter& painter) {
  drawToolGround(option, painter);
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool bright =
      option.state & (QStyle::State_On | QStyle::State_Sunken | QStyle::State_MouseOver);
  const QColor colour = TYStyleKit::colour(!enabled ? Token::TextDisabled
                                           : bright ? Token::Text
                                                    : Token::Text2);
  const int arrow = showsArrow(option) ? kToolArrow : 0;
  painter.setPen(colour);
  QRect icon(QPoint(), option.iconSize);
  if (isUnderIcon(option)) {
    const QRect label(option.rect.left(), option.rect.bottom() - 2 - kToolLabelHeight,
                      option.rect.width(), kToolLabelHeight);
    painter.drawText(label, Qt::AlignCenter | Qt::TextShowMnemonic, option.text);
    icon.moveCenter({option.rect.center().x() - arrow / 2, 0});
    icon.moveBottom(label.top() - 3);
  } else {
    const bool alone = !showsText(option);
    icon.moveCenter(option.rect.center());
    if (!alone || arrow) icon.moveLeft(option.rect.left() + (alone ? 4 : 8));
    if (option.toolButtonStyle == Qt::ToolButtonTextOnly) icon.setWidth(0);
    const int x = icon.width() ? icon.right() + 1 + kGap : option.rect.left() + 8;
    const QRect label(x, option.rect.top(), option.rect.right() - x, option.rect.height());
    if (!alone) painter.drawText(label, Qt::AlignVCenter | Qt::TextShowMnemonic, option.text);
  }
  if (icon.width()) drawToolIcon(option, icon, painter);
  if (arrow) {
    const double x = isUnderIcon(option) ? icon.right() + 1 : option.rect.right() - arrow - 2;
    TYGlyph::paint(painter, QStringLiteral("Down"),
                   QRectF(x, icon.center().y() - 5, kToolArrow, kToolArrow), colour);
  }
}

}  // namespace widgets
