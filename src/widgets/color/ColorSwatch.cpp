#include "widgets/color/ColorSwatch.h"

#include <QPainter>
#include <QPainterPath>

#include "widgets/Chessboard.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"
#include "widgets/color/ColorPopover.h"

namespace widgets {
namespace {

constexpr int kSide = 17;
constexpr double kRadius = 3;

}  // namespace

ColorSwatch::ColorSwatch(const QColor& color, QWidget* parent)
    : QAbstractButton(parent), m_color(color) {
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setFixedSize(kSide, kSide);
  setToolTip(ColorPopover::hexText(color));
  setAccessibleName(toolTip());
}

void ColorSwatch::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath path;
  path.addRoundedRect(rect(), kRadius, kRadius);
  if (m_color.alpha() < 255) painter.fillPath(path, chessboardBrush(4));
  painter.fillPath(path, m_color);
  DevicePixels(painter).edge(rect(), TYStyleKit::colour(underMouse() ? Token::Text : Token::Border),
                             kRadius);
}

}  // namespace widgets
