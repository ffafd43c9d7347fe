#include "runtime/draw/Gradient.h"

#include <cstring>

#include "runtime/draw/ItemGeometry.h"
#include "runtime/draw/PixelBlend.h"

namespace runtime {

namespace {

using Direction = GradientItem::Direction;

struct Levels {
  std::array<double, 4> channels{};  ///< premultiplied, 0…255
};

Levels levelsOf(const foundation::Color& straight) {
  const foundation::Color c = clamped(straight);
  const double a = c.alpha * 255;
  return {{c.red * a, c.green * a, c.blue * a, a}};
}

QRgb between(const Levels& a, const Levels& b, double f) {
  const auto mix = [&](size_t i) {
    return static_cast<int>(a.channels[i] + (b.channels[i] - a.channels[i]) * f + 0.5);
  };
  return qRgba(mix(0), mix(1), mix(2), mix(3));
}

QRgb colorAt(const std::vector<Levels>& stops, double middle, double place) {
  if (stops.size() == 1) return between(stops[0], stops[0], 0);
  if (stops.size() == 2) return between(stops[0], stops[1], place);
  if (place < middle) return between(stops[0], stops[1], place / middle);
  return middle < 1 ? between(stops[1], stops[2], (place - middle) / (1 - middle))
                    : between(stops[2], stops[2], 0);
}

void blendRow(const GradientRamp& ramp, Blending blending, QPoint inner, QRgb* out, int count) {
  const bool isHorizontal = ramp.isHorizontal();
  const QRgb* colors = &ramp.at(inner.x(), inner.y());
  if (blending == Blending::Over) {
    if (!isHorizontal && *colors == 0) return;
    for (int x = 0; x < count; ++x) out[x] = blendedOver(out[x], colors[isHorizontal ? x : 0]);
    return;
  }
  for (int x = 0; x < count; ++x) out[x] = blended(out[x], colors[isHorizontal ? x : 0], blending);
}

}  // namespace

GradientRamp::GradientRamp(const GradientItem& item, const QSize& size)
    : m_horizontal(item.direction == Direction::Right || item.direction == Direction::Left) {
  std::vector<Levels> stops;
  for (const auto& color : item.colors) stops.push_back(levelsOf(color));
  if (stops.empty()) stops.emplace_back();
  const double middle = item.middle > 0 ? std::min(item.middle, 1.0) : 0;
  const bool backwards = item.direction == Direction::Up || item.direction == Direction::Left;
  const int count = m_horizontal ? size.width() : size.height();
  m_colors.reserve(static_cast<size_t>(std::max(count, 0)));
  for (int i = 0; i < count; ++i) {
    const double place = (i + 0.5) / count;
    m_colors.push_back(colorAt(stops, middle, backwards ? 1 - place : place));
  }
}

bool GradientRamp::coversEverything(const GradientItem& item) {
  if (item.blending == Blending::Replace) return true;
  return item.blending != Blending::Add &&
         std::all_of(item.colors.begin(), item.colors.end(),
                     [](const foundation::Color& c) { return c.alpha >= 1; });
}

void paintGradient(const GradientItem& item, const Viewport& viewport, const PixelRows& target) {
  const GradientRamp ramp(item, viewport.size);
  const QRect area = viewport.clip & viewport.rect();
  if (area.isEmpty()) return;
  const bool covers = GradientRamp::coversEverything(item);
  const auto bytes = static_cast<size_t>(area.width()) * sizeof(QRgb);
  for (int y = area.top(); y <= area.bottom(); ++y) {
    QRgb* out = target.row(y) + area.left();
    const int innerY = y - viewport.origin.y();
    const int innerX = area.left() - viewport.origin.x();
    if (covers && ramp.isHorizontal() && y > area.top()) {
      std::memcpy(out, target.row(area.top()) + area.left(), bytes);
    } else if (covers && !ramp.isHorizontal()) {
      std::fill_n(out, area.width(), ramp.at(0, innerY));
    } else {
      blendRow(ramp, item.blending, {innerX, innerY}, out, area.width());
    }
  }
}

}  // namespace runtime
