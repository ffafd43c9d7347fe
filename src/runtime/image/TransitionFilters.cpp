#include "runtime/image/Combining.h"
#include "runtime/image/ImageFilter.h"
#include "runtime/image/PixelReader.h"

namespace runtime::image {

namespace {

float unit(double v) {
  return static_cast<float>(std::clamp(v, 0.0, 1.0));
}

Image dissolve(const FilterArguments& a) {
  const float t = unit(a.number(2));
  return combined(a.image(0), a.image(1), Coverage::Union,
                  [t](Pixel from, Pixel to) { return mix(from, to, t); });
}

/// f(x, y, from, to) for each pixel of both images.
template <typename F>
Image crossing(const FilterArguments& a, const F& f) {
  const Image from = a.image(0);
  const Image to = a.image(1);
  return covering(from, to, Coverage::Union, [from, to, f](const QRect& area) {
    const PixelReader first(from, area);
    const PixelReader second(to, area);
    return paintArea(area, [&](double x, double y) {
      return f(x, y, first.nearest(x, y), second.nearest(x, y));
    });
  });
}

/// How far along the direction (0…1) a place of the rectangle lies.
class Progress {
 public:
  Progress(const QRectF& extent, double angle)
      : m_along(std::cos(angle), std::sin(angle)), m_start(1e9) {
    double end = -1e9;
    for (const QPointF& corner :
         {extent.topLeft(), extent.topRight(), extent.bottomLeft(), extent.bottomRight()}) {
      const double v = QPointF::dotProduct(corner, m_along);
      m_start = std::min(m_start, v);
      end = std::max(end, v);
    }
    m_length = std::max(end - m_start, 1e-6);
  }
  [[nodiscard]] double length() const { return m_length; }
  [[nodiscard]] double operator()(double x, double y) const {
    return (QPointF::dotProduct(QPointF(x, y), m_along) - m_start) / m_length;
  }

 private:
  QPointF m_along;
  double m_start;
  double m_length = 1;
};

Image swipe(const FilterArguments& a) {
  const Progress place(a.rectangle(3), a.number(5));
  const double width = std::max(a.number(6), 1.0) / place.length();
  const double front = a.number(2) * (1 + width);  // the far edge of the band
  const Pixel color = Pixel::fromColor(a.color(4));
  const float opacity = unit(a.number(7));
  return crossing(a, [=](double x, double y, Pixel from, Pixel to) {
    const double behind = (front - place(x, y)) / width;  // 0…1 within the band
    const Pixel p = mix(from, to, unit(behind));
    const float band = 1 - std::min(1.0F, static_cast<float>(std::abs(2 * behind - 1)));
    return mix(p, color * std::max(p.a, color.a), band * opacity * color.a);
  });
}

Image barsSwipe(const FilterArguments& a) {
  const double angle = a.number(3);
  const QRectF extent =
      a.image(0).isInfinite() ? QRectF(0, 0, 300, 300) : QRectF(a.image(0).extent());
  const Progress across(extent, angle);
  const Progress along(extent, angle + 1.5707963267948966);
  const double width = std::max(a.number(4), 1.0);
  const double lag = std::clamp(a.number(5), 0.0, 100.0) / 100;
  const double time = a.number(2) * (1 + lag);
  return crossing(a, [=](double x, double y, Pixel from, Pixel to) {
    const double bar = std::floor(along(x, y) * along.length() / width);
    const double start = lag * std::fmod(bar * 0.618034, 1.0);  // each bar sets off at its own time
    return across(x, y) < time - start ? to : from;
  });
}

Image disintegrate(const FilterArguments& a) {
  const Image from = a.image(0);
  const Image to = a.image(1);
  const Image mask = a.image(2);
  if (mask.isNull()) return from;
  const float time = unit(a.number(3));
  const auto soft = std::max(a.single(4), 1e-3F);  // softness of the edge, in luminance
  return covering(from, to, Coverage::Union, [=](const QRect& area) {
    const PixelReader first(from, area);
    const PixelReader second(to, area);
    const PixelReader third(mask, area);
    return paintArea(area, [&](double x, double y) {
      const float v = third.nearest(x, y).luminance();
      const float t = std::clamp((time * (1 + soft) - v) / soft, 0.0F, 1.0F);
      return mix(first.nearest(x, y), second.nearest(x, y), t);
    });
  });
}

/// Holes that grow on a grid, through which the target shows.
Image mod(const FilterArguments& a) {
  const QPointF center = a.point(3);
  const double angle = a.number(4);
  const double spacing = std::max(a.number(5), 2.0);
  const double time = std::clamp(a.number(2), 0.0, 1.0);
  return crossing(a, [=](double x, double y, Pixel from, Pixel to) {
    const QPointF d = QPointF(x, y) - center;
    const double u = (d.x() * std::cos(angle) + d.y() * std::sin(angle)) / spacing;
    const double v = (d.y() * std::cos(angle) - d.x() * std::sin(angle)) / spacing;
    const double distance = std::hypot(u - std::round(u), v - std::round(v)) * spacing;
    return mix(from, to, unit(time * spacing * 0.75 - distance + 0.5));
  });
}

Image flash(const FilterArguments& a) {
  const double time = std::clamp(a.number(2), 0.0, 1.0);
  const Pixel color = Pixel::fromColor(a.color(4));
  const float bright = unit(1 - std::abs(2 * time - 1));
  const float t = smoothStep(0.35F, 0.65F, static_cast<float>(time));
  const QPointF center = a.point(3);
  const double reach = std::max(a.rectangle(5).width(), 1.0);
  return crossing(a, [=](double x, double y, Pixel from, Pixel to) {
    const double d = std::hypot(x - center.x(), y - center.y()) / reach;
    const Pixel p = mix(from, to, t);
    return mix(p, color * p.a, unit(bright * (1.6 - 0.6 * d)));
  });
}

/// A bright bar that runs over the image and leaves the target behind.
Image copyMachine(const FilterArguments& a) {
  const Progress place(a.rectangle(3), a.number(5));
  const double width = std::max(a.number(6), 1.0) / place.length();
  // From where the bar's light does not yet reach the image to where it no longer does.
  const double front = a.number(2) * (1 + 2 * width) - width;
  const Pixel color = Pixel::fromColor(a.color(4));
  const float opacity = unit(a.number(7));
  return crossing(a, [=](double x, double y, Pixel from, Pixel to) {
    const double d = place(x, y) - front;
    const Pixel p = d < 0 ? to : from;
    const auto light = static_cast<float>(std::exp(-8 * d * d / (width * width))) * opacity;
    return (p + color * (light * p.a)).clamped();
  });
}

}  // namespace

ImageFilters transitionFilters() {
  using namespace inputs;
  constexpr auto alike = "looks alike, but not pixel for pixel";
  const auto with = [](std::vector<FilterInput> more) {
    std::vector<FilterInput> all = {image(), image("inputTargetImage"), number("inputTime", 0)};
    all.insert(all.end(), more.begin(), more.end());
    return all;
  };
  const FilterInput extent = rectangle("inputExtent", {0, 0, 300, 300});
  return {
      {"CIDissolveTransition", with({}), dissolve},
      {"CISwipeTransition",
       with({extent, color("inputColor", white), angle(), length("inputWidth", 300),
             number("inputOpacity", 0)}),
       swipe, alike},
      {"CIBarsSwipeTransition",
       with({angle("inputAngle", 180), length("inputWidth", 30), number("inputBarOffset", 10)}),
       barsSwipe, alike},
      {"CIDisintegrateWithMaskTransition",
       {image(), image("inputTargetImage"), image("inputMaskImage"), number("inputTime", 0),
        number("inputShadowRadius", 0.08), number("inputShadowDensity", 0.65),
        point("inputShadowOffset", 0, -10)},
       disintegrate,
       "has no shadow; the shadow radius softens the edge"},
      {"CIModTransition",
       with({center(), angle("inputAngle", 114.59155902616465), length("inputRadius", 150),
             number("inputCompression", 300)}),
       mod, alike},
      {"CIFlashTransition",
       with({center(), color("inputColor", {1, 0.8, 0.6, 1}), extent,
             number("inputMaxStriationRadius", 2.58), number("inputStriationStrength", 0.5),
             number("inputStriationContrast", 1.375), number("inputFadeThreshold", 0.85)}),
       flash, "a round flash without beams"},
      {"CICopyMachineTransition",
       with({extent, color("inputColor", {0.6, 1, 0.8, 1}), angle(), length("inputWidth", 200),
             number("inputOpacity", 1.3)}),
       copyMachine, alike},
  };
}

}  // namespace runtime::image
