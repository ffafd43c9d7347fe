#include <QtMath>

#include "runtime/image/Blur.h"
#include "runtime/image/ComputedImage.h"
#include "runtime/image/ImageFilter.h"
#include "runtime/image/Noise.h"
#include "runtime/image/PixelReader.h"

namespace runtime::image {

namespace {

/// An image of the same extent whose pixel at p is f(reader, p); the reader also holds `margin`
/// pixels around the area.
template <typename F>
Image styled(const Image& image, double margin, const F& f) {
  return ComputedImage::like(image, {image}, [image, margin, f](const QRect& area) {
    const int around = qCeil(std::clamp(margin, 0.0, 2000.0)) + 1;
    const PixelReader reader(image, grown(area, around));
    return paintArea(area, [&](double x, double y) { return f(reader, QPointF(x, y)); });
  });
}

/// The middle of the grid cell that holds the point.
QPointF cellMiddle(const QPointF& p, const QPointF& center, double size) {
  return {center.x() + (std::floor((p.x() - center.x()) / size) + 0.5) * size,
          center.y() + (std::floor((p.y() - center.y()) / size) + 0.5) * size};
}

Image pixellate(const FilterArguments& a) {
  const QPointF center = a.point(1);
  const double size = std::max(a.number(2), 1.0);
  return styled(a.image(0), size, [=](const PixelReader& reader, const QPointF& p) {
    const QPointF c = cellMiddle(p, center, size);
    return reader.sample(c.x(), c.y());
  });
}

Image hexagonalPixellate(const FilterArguments& a) {
  const QPointF center = a.point(1);
  const double size = std::max(a.number(2), 1.0);
  return styled(a.image(0), 2 * size, [=](const PixelReader& reader, const QPointF& p) {
    // The nearer of two interleaved grids of points gives hexagons.
    const double height = size * std::sqrt(3.0);
    const QPointF d = p - center;
    const auto snap = [](double v, double step, double offset) {
      return std::round((v - offset) / step) * step + offset;
    };
    const QPointF one(snap(d.x(), size, 0), snap(d.y(), height, 0));
    const QPointF two(snap(d.x(), size, size / 2), snap(d.y(), height, height / 2));
    const auto distance = [&](const QPointF& q) { return QPointF::dotProduct(d - q, d - q); };
    const QPointF c = center + (distance(one) <= distance(two) ? one : two);
    return reader.sample(c.x(), c.y());
  });
}

/// The nearest of randomly placed points, one a cell of the size; gives its distance too.
QPointF nearestSeed(const QPointF& p, const QPointF& center, double size, double& distance) {
  const QPointF d = (p - center) / size;
  QPointF best;
  distance = 1e9;
  for (int v = -1; v <= 1; ++v)
    for (int u = -1; u <= 1; ++u) {
      const int column = qFloor(d.x()) + u;
      const int row = qFloor(d.y()) + v;
      const QPointF seed(column + noiseValue(column, row), row + noiseValue(column + 9173, row));
      const double away = std::hypot(seed.x() - d.x(), seed.y() - d.y());
      if (away >= distance) continue;
      distance = away;
      best = seed;
    }
  distance *= size;
  return center + best * size;
}

Image crystallize(const FilterArguments& a) {
  const double size = std::max(a.number(1), 1.0);
  const QPointF center = a.point(2);
  return styled(a.image(0), 2 * size, [=](const PixelReader& reader, const QPointF& p) {
    double distance = 0;
    const QPointF c = nearestSeed(p, center, size, distance);
    return reader.sample(c.x(), c.y());
  });
}

Image pointillize(const FilterArguments& a) {
  const double size = std::max(a.number(1), 1.0);
  const QPointF center = a.point(2);
  return styled(a.image(0), 2 * size, [=](const PixelReader& reader, const QPointF& p) {
    double distance = 0;
    const QPointF c = nearestSeed(p, center, size, distance);
    const auto inside = static_cast<float>(std::clamp(size * 0.6 - distance + 0.5, 0.0, 1.0));
    return reader.sample(c.x(), c.y()) * inside;
  });
}

/// Length of the difference between diagonal neighbours, a component at a time.
Image edges(const FilterArguments& a) {
  return styled(a.image(0), 1, [k = a.single(1)](const PixelReader& reader, const QPointF& p) {
    const Pixel one = reader.nearest(p.x() + 1, p.y() + 1) - reader.nearest(p.x(), p.y());
    const Pixel two = reader.nearest(p.x() + 1, p.y()) - reader.nearest(p.x(), p.y() + 1);
    const auto length = [k](float u, float v) { return k * std::sqrt(u * u + v * v) * 2; };
    const float alpha = reader.nearest(p.x(), p.y()).a;
    return Pixel{std::min(length(one.r, two.r), alpha), std::min(length(one.g, two.g), alpha),
                 std::min(length(one.b, two.b), alpha), alpha};
  });
}

/// White where the image differs from its surroundings, transparent elsewhere.
Image edgeWork(const FilterArguments& a) {
  const Image image = a.image(0);
  const Image soft = gaussianBlurred(image, std::max(a.number(1), 0.1));
  return ComputedImage::like(image, {image, soft}, [=](const QRect& area) {
    const PixelReader sharp(image, area);
    const PixelReader blurred(soft, area);
    return paintArea(area, [&](double x, double y) {
      const float d = sharp.nearest(x, y).luminance() - blurred.nearest(x, y).luminance();
      const float v = smoothStep(0.01F, 0.06F, std::abs(d));
      return Pixel{v, v, v, v};
    });
  });
}

/// A grey dome over a mask: black outside and at its rim, rising to white over the radius.
Image heightField(const FilterArguments& a) {
  const Image image = a.image(0);
  const double radius = std::max(a.number(1), 0.1);
  const Image soft = gaussianBlurred(image, radius / 2);
  return ComputedImage::like(soft, {image, soft}, [=](const QRect& area) {
    const PixelReader sharp(image, area);
    const PixelReader blurred(soft, area);
    return paintArea(area, [&](double x, double y) {
      // At a straight rim the blurred mask is half of the sharp one.
      const float mask = sharp.nearest(x, y).luminance();
      if (mask <= 0) return Pixel{0, 0, 0, 1};
      const float depth = std::clamp(2 * blurred.nearest(x, y).luminance() / mask - 1, 0.0F, 1.0F);
      const float dome = std::sqrt(depth * (2 - depth)) * mask;
      return Pixel{dome, dome, dome, 1};
    });
  });
}

Image spotColor(const FilterArguments& a) {
  struct Spot {
    Pixel center;
    Pixel replacement;
    float closeness;
    float contrast;
  };
  std::array<Spot, 3> spots;
  for (size_t i = 0; i < 3; ++i)
    spots[i] = {Pixel::fromColor(a.color(1 + 4 * i)), Pixel::fromColor(a.color(2 + 4 * i)),
                a.single(3 + 4 * i), a.single(4 + 4 * i)};
  return styled(a.image(0), 0, [spots](const PixelReader& reader, const QPointF& p) {
    const Pixel s = reader.nearest(p.x(), p.y());
    const Pixel c = s.straight();
    Pixel out{1, 1, 1, 1};
    for (const Spot& spot : spots) {
      const Pixel d = c - spot.center;
      const float away = std::sqrt(d.r * d.r + d.g * d.g + d.b * d.b);
      const float t = std::clamp(1 - (away - spot.closeness) * spot.contrast * 4, 0.0F, 1.0F);
      out = mix(out, spot.replacement, t);
    }
    return out * s.a;
  });
}

/// The image as black on white by a screen function f(u, v) of 0…1, in turned grid coordinates.
template <typename F>
Image screened(const FilterArguments& a, const F& f) {
  const QPointF center = a.point(1);
  const double angle = a.number(2);
  const double width = std::max(a.number(3), 1.0);
  const auto soft = static_cast<float>(1 - std::clamp(a.number(4), 0.0, 0.99)) / 2;
  return styled(a.image(0), 0, [=](const PixelReader& reader, const QPointF& p) {
    const QPointF d = p - center;
    const double u = (d.x() * std::cos(angle) + d.y() * std::sin(angle)) / width;
    const double v = (d.y() * std::cos(angle) - d.x() * std::sin(angle)) / width;
    const Pixel s = reader.nearest(p.x(), p.y());
    const auto threshold = static_cast<float>(f(u, v));
    const float white = smoothStep(-soft, soft, s.straight().luminance() - threshold);
    return Pixel{white * s.a, white * s.a, white * s.a, s.a};
  });
}

double wave(double v) {
  return 0.5 + 0.5 * std::cos(2 * M_PI * v);
}

Image dotScreen(const FilterArguments& a) {
  return screened(a, [](double u, double v) { return (wave(u) + wave(v)) / 2; });
}

Image lineScreen(const FilterArguments& a) {
  return screened(a, [](double, double v) { return wave(v); });
}

Image hatchedScreen(const FilterArguments& a) {
  return screened(a, [](double u, double v) { return std::max(wave(u), wave(v)); });
}

Image circularScreen(const FilterArguments& a) {
  FilterArguments round;  // has no angle of its own
  round.values = {a.values[0], a.values[1], {}, a.values[2], a.values[3]};
  return screened(round, [](double u, double v) { return wave(std::hypot(u, v)); });
}

}  // namespace

ImageFilters styleFilters() {
  using namespace inputs;
  constexpr auto alike = "looks alike, but not pixel for pixel";
  const std::vector<FilterInput> screen = {image(), center(), angle(), length("inputWidth", 6),
                                           number("inputSharpness", 0.7)};
  std::vector<FilterInput> spots = {image()};
  static constexpr const char* spotKeys[3][4] = {
      {"inputCenterColor1", "inputReplacementColor1", "inputCloseness1", "inputContrast1"},
      {"inputCenterColor2", "inputReplacementColor2", "inputCloseness2", "inputContrast2"},
      {"inputCenterColor3", "inputReplacementColor3", "inputCloseness3", "inputContrast3"}};
  static constexpr std::array<double, 4> spotCenters[] = {
      {0.08, 0.06, 0.06, 1}, {0.41, 0.24, 0.18, 1}, {0.92, 0.48, 0.36, 1}};
  for (size_t i = 0; i < 3; ++i) {
    spots.push_back(color(spotKeys[i][0], spotCenters[i]));
    spots.push_back(color(spotKeys[i][1], spotCenters[i]));
    spots.push_back(number(spotKeys[i][2], 0.2));
    spots.push_back(number(spotKeys[i][3], 0.98));
  }
  return {
      {"CIPixellate", {image(), center(), length("inputScale", 8)}, pixellate},
      {"CIHexagonalPixellate", {image(), center(), length("inputScale", 8)}, hexagonalPixellate},
      {"CICrystallize", {image(), length("inputRadius", 20), center()}, crystallize, alike},
      {"CIPointillize", {image(), length("inputRadius", 20), center()}, pointillize, alike},
      {"CIEdges", {image(), number("inputIntensity", 1)}, edges, alike},
      {"CIEdgeWork", {image(), length("inputRadius", 3)}, edgeWork, alike},
      {"CIHeightFieldFromMask", {image(), length("inputRadius", 10)}, heightField, alike},
      {"CISpotColor", spots, spotColor, alike},
      {"CIDotScreen", screen, dotScreen, alike},
      {"CILineScreen", screen, lineScreen, alike},
      {"CIHatchedScreen", screen, hatchedScreen, alike},
      {"CICircularScreen",
       {image(), center(), length("inputWidth", 6), number("inputSharpness", 0.7)},
       circularScreen,
       alike},
  };
}

}  // namespace runtime::image
