#include <QAbstractScrollArea>
#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"

namespace widgets {
namespace {

constexpr double kThumb = 6;
constexpr int kShortestThumb = 24;
constexpr double kKnobGap = 2;

// What the scroll bar lies on: the ground of the area that it scrolls.
QColor groundBelow(const QStyleOptionSlider& option, const QWidget* widget) {
  for (const QWidget* at = widget; at; at = at->parentWidget())
    if (const auto* area = qobject_cast<const QAbstractScrollArea*>(at))
      return area->viewport()->palette().color(area->viewport()->backgroundRole());
  return option.palette.color(QPalette::Window);
}

int thumbLength(const QStyleOptionSlider& option, int groove) {
  const qint64 range = qint64(option.maximum) - option.minimum;
  if (range <= 0) return groove;
  const qint64 length = qint64(option.pageStep) * groove / (range + option.pageStep);
  return int(std::clamp<qint64>(length, std::min(kShortestThumb, groove), groove));
}

}  // namespace

void drawSlider(const QStyleOptionSlider& option, const QRectF& knob, QPainter& painter) {
  const bool enabled = option.state & QStyle::State_Enabled;
  const bool horizontal = option.orientation == Qt::Horizontal;
  const QColor rest = TYStyleKit::colour(enabled ? Token::Border : Token::Separator);
  const QColor done = TYStyleKit::colour(enabled ? Token::Accent : Token::TextDisabled);
  const DevicePixels pixels(painter);
  const QRectF r = option.rect;
  // The gap around the knob stays free, whatever the ground is.
  if (horizontal) {
    const double y = knob.center().y() - 1;
    const bool mirrored = option.upsideDown;
    pixels.fill(QRectF(r.left(), y, knob.left() - kKnobGap - r.left(), 2), mirrored ? rest : done);
    const double x = knob.right() + kKnobGap;
    pixels.fill(QRectF(x, y, r.right() - x, 2), mirrored ? done : rest);
  } else {
    const double x = knob.center().x() - 1;
    pixels.fill(QRectF(x, r.top(), 2, knob.top() - kKnobGap - r.top()), rest);
    const double y = knob.bottom() + kKnobGap;
    pixels.fill(QRectF(x, y, 2, r.bottom() - y), done);
  }
  const bool active = option.state & (QStyle::State_MouseOver | QStyle::State_Sunken);
  pixels.fill(knob, TYStyleKit::colour(enabled ? Token::Text : Token::TextDisabled),
              knob.width() / 2);
  if (enabled && active)
    pixels.edge(knob.adjusted(-1, -1, 1, 1), TYStyleKit::colour(Token::Accent),
                knob.width() / 2 + 1, 1.5 / pixels.hairline());
}

QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part) {
  const bool horizontal = option.orientation == Qt::Horizontal;
  const QRect groove = option.rect;
  const int extent = horizontal ? groove.width() : groove.height();
  const int length = thumbLength(option, extent);
  const int at = QStyle::sliderPositionFromValue(
      option.minimum, option.maximum, option.sliderPosition, extent - length, option.upsideDown);
  const auto slice = [&](int from, int size) {
    const QRect rect = horizontal ? QRect(groove.left() + from, groove.top(), size, groove.height())
                                  : QRect(groove.left(), groove.top() + from, groove.width(), size);
    return QStyle::visualRect(option.direction, option.rect, rect);
  };
  switch (part) {
    case QStyle::SC_ScrollBarSlider:
      return slice(at, length);
    case QStyle::SC_ScrollBarSubPage:
      return slice(0, at);
    case QStyle::SC_ScrollBarAddPage:
      return slice(at + length, extent - at - length);
    case QStyle::SC_ScrollBarGroove:
      return groove;
    default:
      return {};
  }
}

void drawScrollBar(const QStyleOptionSlider& option, const QRectF& thumb, QPainter& painter,
                   const QWidget* widget) {
  painter.fillRect(option.rect, groundBelow(option, widget));
  if (option.maximum <= option.minimum) return;
  QRectF bar = thumb;
  if (option.orientation == Qt::Horizontal) {
    bar.setTop(thumb.center().y() - kThumb / 2);
    bar.setHeight(kThumb);
    bar.adjust(2, 0, -2, 0);
  } else {
    bar.setLeft(thumb.center().x() - kThumb / 2);
    bar.setWidth(kThumb);
    bar.adjust(0, 2, 0, -2);
  }
  const bool active = option.state & QStyle::State_MouseOver || option.state & QStyle::State_Sunken;
  QColor colour = TYStyleKit::colour(active ? Token::Text3 : Token::Border);
  if (!active) colour.setAlphaF(0.75F);
  DevicePixels(painter).fill(bar, colour, kThumb / 2);
}

void drawProgress(const QStyleOptionProgressBar& option, QPainter& painter, const QWidget* widget) {
  QRectF track = option.rect;
  track.setTop(QRectF(option.rect).center().y() - 2);
  track.setHeight(4);
  const DevicePixels pixels(painter);
  pixels.fill(track, TYStyleKit::colour(Token::ControlOn), 2);
  const double range = double(option.maximum) - option.minimum;
  QRectF done = track;
  if (range > 0) {
    done.setWidth(track.width() * std::clamp((option.progress - option.minimum) / range, 0.0, 1.0));
  } else {
    const double phase = widget ? widget->property("phase").toDouble() : 0;
    done.setWidth(track.width() * 0.3);
    done.moveLeft(track.left() + phase * (track.width() - done.width()));
  }
  if (done.width() >= 1) pixels.fill(done, TYStyleKit::colour(Token::Accent), 2);
}

}  // namespace widgets
