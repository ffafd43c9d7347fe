#include "canvas/TimecodePlate.h"

#include <QPainter>
#include <cmath>

#include "foundation/Timecode.h"
#include "model/Composition.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TabularText.h"

namespace canvas {

using widgets::TYStyleKit;

namespace {

constexpr double height = 26;
constexpr double distance = 12;  // from the picture's upper edge
constexpr double padding = 11;
constexpr double radius = 5;
constexpr QColor ground(12, 13, 16, 219);
constexpr QColor ink(244, 245, 248);
constexpr QColor edge(255, 255, 255, 36);

}  // namespace

QString TimecodePlate::textFor(const model::Composition& composition) {
  const foundation::TimecodeRate rate = composition.videoResolution().timecodeRate();
  return foundation::Timecode::fromSeconds(composition.editorTimepoint(), rate).toString();
}

QRectF TimecodePlate::place(const CanvasGeometry& geometry, const QRectF& seen,
                            const QString& text) {
  const double width =
      std::ceil(widgets::TabularText::width(TYStyleKit::font(widgets::TextStyle::TimeCode), text)) +
      2 * padding;
  const QRectF picture = geometry.pictureFrame() & seen;
  return {std::round(picture.center().x() - width / 2), std::round(picture.top()) + distance, width,
          height};
}

void TimecodePlate::paint(QPainter& painter, const QRectF& place, const QString& text) {
  painter.save();
  widgets::DevicePixels(painter).box(place, ground, edge, radius);
  painter.setFont(TYStyleKit::font(widgets::TextStyle::TimeCode));
  painter.setPen(ink);
  widgets::TabularText::draw(painter, place, Qt::AlignCenter, text);
  painter.restore();
}

}  // namespace canvas
