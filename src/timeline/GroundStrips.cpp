#include "timeline/GroundStrips.h"

#include <QPainter>
#include <cmath>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace timeline {

using widgets::DevicePixels;
using widgets::Token;
using widgets::TYStyleKit;
using Space = TYTimelineGeometry::Space;

namespace {

constexpr double height = TimelineMeasures::componentHeight;
constexpr double tickOpacity = 0.28;
constexpr double beyondOpacity = 0.55;

QColor faded(Token token, double opacity) {
  QColor color = TYStyleKit::colour(token);
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

Token groundOf(GroundStrips::Kind kind) {
  switch (kind) {
    case GroundStrips::Selected:
      return Token::SelectionRow;
    case GroundStrips::Odd:
      return Token::TimelineRowAlt;
    case GroundStrips::Even:
      break;
  }
  return Token::TimelineRow;
}

}  // namespace

void GroundStrips::update(const TimelineScene& scene, double width, double scale) {
  const TYTimelineGeometry& geometry = scene.geometry;
  const Key key{.left = geometry.visibleOrigin().x(),
                .width = width,
                .scale = scale,
                .unitWidth = geometry.unitWidth(),
                .duration = scene.composition ? geometry.content().duration : -1,
                .ticks = geometry.content().ticksPerSecond,
                .colours = {TYStyleKit::colour(Token::TimelineRow).rgba(),
                            TYStyleKit::colour(Token::TimelineRowAlt).rgba(),
                            TYStyleKit::colour(Token::SelectionRow).rgba(),
                            TYStyleKit::colour(Token::TimelineGrid).rgba()}};
  if (key == m_key) return;
  m_key = key;
  for (const Kind kind : {Even, Odd, Selected}) m_strips[kind] = painted(scene, kind);
}

QPixmap GroundStrips::painted(const TimelineScene& scene, Kind kind) const {
  QPixmap strip(qCeil(m_key.width * m_key.scale), qCeil(height * m_key.scale));
  strip.setDevicePixelRatio(m_key.scale);
  strip.fill(TYStyleKit::colour(groundOf(kind)));
  if (!scene.composition) return strip;
  QPainter painter(&strip);
  painter.translate(-m_key.left, 0);
  const double right = m_key.left + m_key.width;
  const DevicePixels pixels(painter);
  const QColor seconds = TYStyleKit::colour(Token::TimelineGrid);
  const QColor ticks = faded(Token::TimelineGrid, tickOpacity);
  scene.geometry.enumerateTicks(Space::Rows, m_key.left, right, [&](double x, int second) {
    pixels.vertical(std::round(x), 0, height, second >= 0 ? seconds : ticks);
  });
  const double end = scene.geometry.xPositionAtTime(m_key.duration, Space::Rows) + 1;
  if (end < right)
    painter.fillRect(QRectF(end, 0, right - end, height), faded(Token::Window, beyondOpacity));
  if (kind == Selected)  // the lowest line separates it from the next one
    painter.fillRect(QRectF(m_key.left, height - 1, m_key.width, 1),
                     TYStyleKit::colour(Token::TimelineRow));
  return strip;
}

void GroundStrips::draw(QPainter& painter, int row, Kind kind, double fromX, double toX) const {
  const double left = std::max(fromX, m_key.left);
  const double right = std::min(toX, m_key.left + m_key.width);
  if (right <= left) return;
  const double scale = m_key.scale;
  painter.drawPixmap(
      QRectF(left, row * height, right - left, height), m_strips[kind],
      QRectF((left - m_key.left) * scale, 0, (right - left) * scale, height * scale));
}

}  // namespace timeline
