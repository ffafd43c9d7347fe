#include <QtMath>

#include "runtime/image/ComputedImage.h"
#include "runtime/image/ImageFilter.h"
#include "runtime/image/Noise.h"
#include "runtime/image/Pixel.h"

namespace runtime::image {

namespace {

/// Light of a colour: as bright as v, and as opaque as it is bright. Above 1 it turns white.
Pixel light(Pixel color, double v) {
  const auto k = static_cast<float>(std::clamp(v, 0.0, 4.0));
  const Pixel p{color.r * k, color.g * k, color.b * k, color.a * k};
  const float white = std::max(0.0F, k - 1) * 0.5F * color.a;
  return Pixel{p.r + white, p.g + white, p.b + white, p.a + white}.clamped();
}

/// Noise that goes smoothly round the circle, `rays` values a turn.
double roundNoise(double angle, int rays, double time) {
  const double turn = (angle + M_PI) / (2 * M_PI) * rays;
  const double blend = turn / rays;  // joins the end to the beginning
  return smoothNoise(turn, time) * (1 - blend) + smoothNoise(turn - rays, time) * blend;
}

struct Striations {
  double strength = 0;
  double contrast = 1;
  double time = 0;
  [[nodiscard]] double operator()(double angle) const {
    const double fine = roundNoise(angle, 64, time * 10);
    const double coarse = roundNoise(angle, 17, time * 10 + 31);
    const double v = (0.6 * fine + 0.4 * coarse - 0.5) * contrast;
    return std::max(0.0, 1 + strength * v * 2);
  }
};

Image sunbeams(const FilterArguments& a) {
  const Striations striations{a.number(4), a.number(5), a.number(6)};
  const double radius = std::max(a.number(2), 1e-3);
  const double reach = radius * std::max(a.number(3), 1e-3);
  const auto paint = [=, center = a.point(0), color = Pixel::fromColor(a.color(1))](double x,
                                                                                    double y) {
    const QPointF d = QPointF(x, y) - center;
    const double distance = std::hypot(d.x(), d.y());
    const double core = smoothStep(static_cast<float>(radius), static_cast<float>(radius * 0.7),
                                   static_cast<float>(distance));
    const double beyond = std::max(0.0, distance - radius * 0.7);
    const double beam = std::exp(-2.5 * beyond / reach) * striations(std::atan2(d.y(), d.x()));
    return light(color, std::max(2 * core, beam));
  };
  return ComputedImage::infinite({}, [paint](const QRect& r) { return paintArea(r, paint); });
}

Image lenticularHalo(const FilterArguments& a) {
  const Striations striations{a.number(5), a.number(6), a.number(7)};
  const double inner = std::max(a.number(2), 1e-3);
  const double width = std::max(a.number(3), 1e-3);
  const double overlap = std::clamp(a.number(4), 0.0, 1.0);
  const auto paint = [=, center = a.point(0), color = Pixel::fromColor(a.color(1))](double x,
                                                                                    double y) {
    const QPointF d = QPointF(x, y) - center;
    const double ring = (std::hypot(d.x(), d.y()) - inner) / width;  // −1 … 1 across the halo
    const double ray = striations(std::atan2(d.y(), d.x()));
    // Each colour has a ring of its own; the more they overlap, the whiter the halo.
    const auto band = [&](double shift) {
      const double v = ring + shift * (1 - overlap);
      return static_cast<float>(std::exp(-3 * v * v) * ray);
    };
    Pixel p{color.r * band(-0.4), color.g * band(0), color.b * band(0.4), 0};
    p.a = std::max({p.r, p.g, p.b});
    return p.clamped();
  };
  return ComputedImage::infinite({}, [paint](const QRect& r) { return paintArea(r, paint); });
}

Image starShine(const FilterArguments& a) {
  const double radius = std::max(a.number(2), 1e-3);
  const double scale = std::max(a.number(3), 1e-3);
  const double angle = a.number(4);
  const double opacity = std::exp(a.number(5));
  const double width = std::max(a.number(6), 1e-3);
  const double glow = std::exp(a.number(7));
  const auto paint = [=, center = a.point(0), color = Pixel::fromColor(a.color(1))](double x,
                                                                                    double y) {
    const QPointF d = QPointF(x, y) - center;
    const double distance = std::hypot(d.x(), d.y());
    const double u = std::abs(d.x() * std::cos(angle) + d.y() * std::sin(angle));
    const double v = std::abs(-d.x() * std::sin(angle) + d.y() * std::cos(angle));
    const auto ray = [&](double along, double across) {
      const double thin = across / width;
      return std::exp(-along / (scale * radius * 0.35)) * std::exp(-thin * thin);
    };
    const double cross = (ray(u, v) + ray(v, u)) * (1 + opacity * 4);
    const double core = std::exp(-distance * distance / (radius * radius)) * 3;
    const double halo = glow * radius / (distance + radius);
    return light(color, core + cross + halo * std::exp(-distance / (scale * radius)));
  };
  return ComputedImage::infinite({}, [paint](const QRect& r) { return paintArea(r, paint); });
}

}  // namespace

ImageFilters lightFilters() {
  using namespace inputs;
  constexpr auto alike = "looks alike, but not pixel for pixel";
  return {
      {"CISunbeamsGenerator",
       {center(), color("inputColor", {1, 0.5, 0, 1}), length("inputSunRadius", 40),
        number("inputMaxStriationRadius", 2.58), number("inputStriationStrength", 0.5),
        number("inputStriationContrast", 1.375), number("inputTime", 0)},
       sunbeams,
       alike},
      {"CILenticularHaloGenerator",
       {center(), color("inputColor", {1, 0.9, 0.8, 1}), length("inputHaloRadius", 70),
        length("inputHaloWidth", 87), number("inputHaloOverlap", 0.77),
        number("inputStriationStrength", 0.5), number("inputStriationContrast", 1),
        number("inputTime", 0)},
       lenticularHalo,
       alike},
      {"CIStarShineGenerator",
       {center(), color("inputColor", {1, 0.8, 0.6, 1}), length("inputRadius", 50),
        number("inputCrossScale", 15), angle("inputCrossAngle", 34.377467707849391),
        number("inputCrossOpacity", -2), length("inputCrossWidth", 2.5),
        number("inputEpsilon", -2)},
       starShine,
       alike},
  };
}

}  // namespace runtime::image
