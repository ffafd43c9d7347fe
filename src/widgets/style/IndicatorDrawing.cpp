#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"

namespace widgets {
namespace {

constexpr double kCheckRadius = 3;
constexpr double kCheckStroke = 1.6;

struct IndicatorColours {
  QColor ground;
  QColor edge;
  QColor mark;
};

IndicatorColours coloursFor(QStyle::State state) {
  const bool on = state & (QStyle::State_On | QStyle::State_NoChange);
  if (!(state & QStyle::State_Enabled)) {
    return {TYStyleKit::colour(on ? Token::Control : Token::Field),
            TYStyleKit::colour(Token::Separator), TYStyleKit::colour(Token::TextDisabled)};
  }
  const bool hovered = state & QStyle::State_MouseOver;
  const QColor mark = TYStyleKit::colour(Token::OnAccent);
  if (on) {
    const QColor fill = TYStyleKit::colour(hovered ? Token::AccentHover : Token::AccentFill);
    return {fill, fill, mark};
  }
  const Token ground = state & QStyle::State_Sunken ? Token::ControlPressed
                       : hovered                    ? Token::ControlHover
                                                    : Token::Field;
  return {TYStyleKit::colour(ground), TYStyleKit::colour(Token::Border), mark};
}

}  // namespace

void drawCheckBox(const QStyleOption& option, QPainter& painter) {
  const IndicatorColours colours = coloursFor(option.state);
  const QRectF box = option.rect;
  DevicePixels(painter).box(box, colours.ground, colours.edge, kCheckRadius);
  const QRectF mark = box.adjusted(1, 1, -1, -1);
  if (option.state & QStyle::State_NoChange)
    TYGlyph::paint(painter, QStringLiteral("Dash"), mark, colours.mark, kCheckStroke);
  else if (option.state & QStyle::State_On)
    TYGlyph::paint(painter, QStringLiteral("Check"), mark, colours.mark, kCheckStroke);
}

void drawRadioButton(const QStyleOption& option, QPainter& painter) {
  const IndicatorColours colours = coloursFor(option.state);
  const DevicePixels pixels(painter);
  const double radius = option.rect.width() / 2.0;
  pixels.box(option.rect, colours.ground, colours.edge, radius);
  if (option.state & QStyle::State_On) {
    const QRectF dot = QRectF(option.rect).adjusted(4, 4, -4, -4);
    pixels.fill(dot, colours.mark, dot.width() / 2);
  }
}

void drawBranch(const QStyleOption& option, QPainter& painter) {
  if (!(option.state & QStyle::State_Children)) return;
  QRectF box(0, 0, kGlyphSide, kGlyphSide);
  box.moveCenter(QRectF(option.rect).center());
  TYGlyph::paint(painter,
                 option.state & QStyle::State_Open ? QStringLiteral("DisclosingOpen")
                                                   : QStringLiteral("DisclosingClosed"),
                 box, TYStyleKit::colour(Token::Text2));
}

}  // namespace widgets
