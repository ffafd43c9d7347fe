#include "runtime/image/ComputedImage.h"
#include "runtime/image/ImageFilter.h"
#include "runtime/image/Noise.h"
#include "runtime/image/Pixel.h"

namespace runtime::image {

namespace {

/// An endless image with the pixel f(x, y) at each place.
template <typename F>
Image endless(const F& f) {
  return ComputedImage::infinite({}, [f](const QRect& area) { return paintArea(area, f); });
}

Image constantColor(const FilterArguments& a) {
  const Pixel color = Pixel::fromColor(a.color(0));
  return ComputedImage::infinite({}, [color](const QRect& area) {
    QImage out(area.size(), QImage::Format_ARGB32_Premultiplied);
    if (!out.isNull()) out.fill(color.toRgb());
    return out;
  });
}

/// A wave of cells of the width: 1 in the cell that starts at 0, −1 in the next one. The flanks
/// are as soft as the sharpness allows, at most two pixels wide when it is 1.
class CellWave {
 public:
  CellWave(double width, double sharpness)
      : m_width(std::max(std::abs(width), 1e-3)),
        m_steepness(std::min(m_width, 1 / std::max(1 - std::clamp(sharpness, 0.0, 1.0), 1e-6))) {}
  [[nodiscard]] double operator()(double v) const {
    const double cell = v / m_width;
    const double within = cell - std::floor(cell);
    const double height = 1 - std::abs(2 * within - 1);  // 0 at the edges, 1 in the middle
    const double sign = std::fmod(std::floor(cell), 2) == 0 ? 1 : -1;
    return sign * std::min(height * m_steepness, 1.0);
  }

 private:
  double m_width;
  double m_steepness;
};

Image checkerboard(const FilterArguments& a) {
  const CellWave wave(a.number(3), a.number(4));
  return endless([wave, center = a.point(0), even = Pixel::fromColor(a.color(1)),
                  odd = Pixel::fromColor(a.color(2))](double x, double y) {
    const double v = wave(x - center.x()) * wave(y - center.y());
    return mix(odd, even, static_cast<float>(0.5 + 0.5 * v));
  });
}

Image stripes(const FilterArguments& a) {
  const CellWave wave(a.number(3), a.number(4));
  return endless([wave, center = a.point(0), even = Pixel::fromColor(a.color(1)),
                  odd = Pixel::fromColor(a.color(2))](double x, double) {
    return mix(odd, even, static_cast<float>(0.5 + 0.5 * wave(x - center.x())));
  });
}

Image linearGradient(const FilterArguments& a) {
  const QPointF line = a.point(1) - a.point(0);
  const double length = QPointF::dotProduct(line, line);
  const QPointF step = length > 0 ? line / length : QPointF();
  return endless([step, start = a.point(0), c0 = Pixel::fromColor(a.color(2)),
                  c1 = Pixel::fromColor(a.color(3))](double x, double y) {
    const double t = QPointF::dotProduct(QPointF(x, y) - start, step);
    return mix(c0, c1, static_cast<float>(std::clamp(t, 0.0, 1.0)));
  });
}

Image radialGradient(const FilterArguments& a) {
  return endless([center = a.point(0), r0 = a.number(1), r1 = a.number(2),
                  c0 = Pixel::fromColor(a.color(3)),
                  c1 = Pixel::fromColor(a.color(4))](double x, double y) {
    const double d = std::hypot(x - center.x(), y - center.y());
    const double t = r0 == r1 ? (d < r0 ? 0 : 1) : (d - r0) / (r1 - r0);
    return mix(c0, c1, static_cast<float>(std::clamp(t, 0.0, 1.0)));
  });
}

Image gaussianGradient(const FilterArguments& a) {
  return endless([center = a.point(0), c0 = Pixel::fromColor(a.color(1)),
                  c1 = Pixel::fromColor(a.color(2)),
                  radius = std::max(a.number(3), 1e-6)](double x, double y) {
    const double t = std::hypot(x - center.x(), y - center.y()) / radius;
    return mix(c1, c0, static_cast<float>(std::exp(-4.5 * t * t)));
  });
}

Image randomPixels(const FilterArguments&) {
  return endless([](double x, double y) {
    const quint32 h = noiseHash(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y)));
    return Pixel::fromRgb(0xff000000U | (h & 0xffffffU));
  });
}

}  // namespace

ImageFilters generatorFilters() {
  using namespace inputs;
  constexpr auto falloff = "the fall-off is a Gaussian whose third deviation is the radius";
  return {
      {"CIConstantColorGenerator", {color("inputColor", {1, 0, 0, 1})}, constantColor},
      {"CICheckerboardGenerator",
       {center(), color("inputColor0", white), color("inputColor1", black),
        length("inputWidth", 80), number("inputSharpness", 1)},
       checkerboard},
      {"CIStripesGenerator",
       {center(), color("inputColor0", white), color("inputColor1", black),
        length("inputWidth", 80), number("inputSharpness", 1)},
       stripes},
      {"CILinearGradient",
       {point("inputPoint0", 0, 0), point("inputPoint1", 200, 200), color("inputColor0", white),
        color("inputColor1", black)},
       linearGradient},
      {"CIRadialGradient",
       {center(), length("inputRadius0", 5), length("inputRadius1", 100),
        color("inputColor0", white), color("inputColor1", black)},
       radialGradient},
      {"CIGaussianGradient",
       {center(), color("inputColor0", white), color("inputColor1", clear),
        length("inputRadius", 300)},
       gaussianGradient,
       falloff},
      {"CIRandomGenerator", {}, randomPixels, "the noise is opaque and has values of its own"},
  };
}

}  // namespace runtime::image
