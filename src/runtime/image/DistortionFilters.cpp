#include <QtMath>

#include "runtime/image/ComputedImage.h"
#include "runtime/image/ImageFilter.h"
#include "runtime/image/PixelReader.h"

namespace runtime::image {

namespace {

constexpr int farthestReach = 2000;

/// Each pixel p becomes the image's pixel at from(p). An infinite image is read at most `reach`
/// pixels away.
template <typename From>
QImage readFrom(const Image& image, const QRect& area, int reach, const From& from) {
  const PixelReader reader(image, grown(area, std::clamp(reach, 0, farthestReach) + 1));
  return paintArea(area, [&](double x, double y) {
    const QPointF p = from(QPointF(x, y));
    return reader.sample(p.x(), p.y());
  });
}

/// A distortion inside a circle; the extent becomes that of the image and the circle together
/// where the distortion carries pixels outwards.
template <typename From>
Image aroundCenter(const Image& image, const QPointF& center, double radius, const From& from) {
  const int reach = qCeil(std::clamp(radius, 0.0, double(farthestReach)));
  const auto render = [=](const QRect& area) {
    return readFrom(image, area, 2 * reach, [&](const QPointF& p) { return from(p - center); });
  };
  if (image.isInfinite()) return ComputedImage::infinite({image}, render);
  return ComputedImage::finite(image.extent(), {image}, render);
}

QPointF turned(const QPointF& p, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  return {p.x() * c - p.y() * s, p.x() * s + p.y() * c};
}

Image bump(const FilterArguments& a) {
  const QPointF center = a.point(1);
  const double radius = std::max(a.number(2), 1e-3);
  const double scale = std::clamp(a.number(3), -1.0, 1.0);
  return aroundCenter(a.image(0), center, radius, [=](const QPointF& d) {
    const double t = std::hypot(d.x(), d.y()) / radius;
    if (t >= 1) return center + d;
    const double inside = 1 - t * t;
    return center + d * (1 - scale * inside * inside);
  });
}

Image pinch(const FilterArguments& a) {
  const QPointF center = a.point(1);
  const double radius = std::max(a.number(2), 1e-3);
  const double scale = std::clamp(a.number(3), 0.0, 2.0);
  return aroundCenter(a.image(0), center, radius, [=](const QPointF& d) {
    const double t = std::hypot(d.x(), d.y()) / radius;
    if (t >= 1 || t == 0) return center + d;
    return center + d * (1 + (std::pow(t, -scale) - 1) * (1 - t));
  });
}

Image twirl(const FilterArguments& a) {
  const QPointF center = a.point(1);
  const double radius = std::max(a.number(2), 1e-3);
  const double angle = a.number(3);
  return aroundCenter(a.image(0), center, radius, [=](const QPointF& d) {
    const double t = std::hypot(d.x(), d.y()) / radius;
    return t >= 1 ? center + d : center + turned(d, -angle * (1 - t) * (1 - t));
  });
}

/// Turns without end towards the centre: the angle is that at the radius.
Image vortex(const FilterArguments& a) {
  const QPointF center = a.point(1);
  const double radius = std::max(a.number(2), 1e-3);
  const double angle = a.number(3);
  return aroundCenter(a.image(0), center, radius, [=](const QPointF& d) {
    const double t = std::hypot(d.x(), d.y()) / radius;
    const double in = std::max(0.0, 1 - t);
    return center + turned(d, -angle * in * in * in);
  });
}

Image hole(const FilterArguments& a) {
  const Image image = a.image(0);
  const QPointF center = a.point(1);
  const double radius = std::max(a.number(2), 1e-3);
  const auto render = [=](const QRect& area) {
    const PixelReader reader(image, grown(area, qCeil(std::min(radius, 2000.0)) + 1));
    return paintArea(area, [&](double x, double y) {
      const QPointF d = QPointF(x, y) - center;
      const double r = std::hypot(d.x(), d.y());
      if (r < radius) return Pixel{};
      // What was at the centre lies at the rim; the push dies away outside.
      const QPointF p = center + d * ((r - radius * std::exp(1 - r / radius)) / r);
      return reader.sample(p.x(), p.y());
    });
  };
  if (image.isInfinite()) return ComputedImage::infinite({image}, render);
  const int reach = qCeil(std::min(radius, double(farthestReach)));
  return ComputedImage::finite(grown(image.extent(), reach), {image}, render);
}

/// Beyond the circle the colours of its rim go on outwards for ever.
Image circleSplash(const FilterArguments& a) {
  const Image image = a.image(0);
  const QPointF center = a.point(1);
  const double radius = std::max(a.number(2), 0.0);
  return ComputedImage::infinite({image}, [=](const QRect& area) {
    const QRectF circle(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius);
    const PixelReader reader(image, grown(pixelRect(circle), 1));
    return paintArea(area, [&](double x, double y) {
      const QPointF d = QPointF(x, y) - center;
      const double r = std::hypot(d.x(), d.y());
      const QPointF p = r > radius ? center + d * (radius / r) : QPointF(x, y);
      return reader.sample(p.x(), p.y());
    });
  });
}

Image torusLens(const FilterArguments& a) {
  const QPointF center = a.point(1);
  const double outer = std::max(a.number(2), 1e-3);
  const double width = std::clamp(a.number(3), 1e-3, outer);
  const double refraction = a.number(4);
  return aroundCenter(a.image(0), center, outer, [=](const QPointF& d) {
    const double r = std::hypot(d.x(), d.y());
    const double u = 2 * (r - (outer - width)) / width - 1;  // −1 … 1 across the ring
    if (r == 0 || std::abs(u) >= 1) return center + d;
    const double shift = u / std::max(refraction, 0.1) * (1 - std::sqrt(1 - u * u)) * width / 2;
    return center + d * ((r - shift) / r);
  });
}

/// Shifts each pixel by what another image says: grey is none.
Image displaced(const FilterArguments& a, double scale, const Image& map, const QPointF& origin) {
  const Image image = a.image(0);
  if (map.isNull()) return image;
  return ComputedImage::like(image, {image, map}, [=](const QRect& area) {
    const int reach = qCeil(std::min(std::abs(scale), double(farthestReach)));
    const PixelReader reader(image, grown(area, reach + 1));
    const QRect e = map.extent();
    const PixelReader shifts(map, map.isInfinite() ? grown(area, 1) : e);
    return paintArea(area, [&](double x, double y) {
      double u = x - origin.x();
      double v = y - origin.y();
      if (!map.isInfinite()) {  // the map repeats
        u = e.x() + u - std::floor(u / e.width()) * e.width();
        v = e.y() + v - std::floor(v / e.height()) * e.height();
      }
      const Pixel shift = shifts.nearest(u, v).straight();
      return reader.sample(x + (shift.r - 0.5) * scale, y + (shift.g - 0.5) * scale);
    });
  });
}

Image displacement(const FilterArguments& a) {
  return displaced(a, a.number(2), a.image(1), {});
}

Image glass(const FilterArguments& a) {
  return displaced(a, a.number(3), a.image(1), a.point(2));
}

Image kaleidoscope(const FilterArguments& a) {
  const Image image = a.image(0);
  const double sectors = std::clamp(std::round(a.number(1)), 1.0, 64.0);
  const QPointF center = a.point(2);
  const double start = a.number(3);
  return ComputedImage::infinite({image}, [=](const QRect& area) {
    const PixelReader reader(image,
                             image.isInfinite() ? grown(area, farthestReach) : image.extent());
    const double sector = 2 * M_PI / sectors;
    return paintArea(area, [&](double x, double y) {
      const QPointF d = QPointF(x, y) - center;
      const double r = std::hypot(d.x(), d.y());
      double angle = std::atan2(d.y(), d.x()) - start;
      angle -= std::floor(angle / sector) * sector;
      if (angle > sector / 2) angle = sector - angle;  // mirrored in the other half
      const double to = angle + start;
      return reader.sample(center.x() + r * std::cos(to), center.y() + r * std::sin(to));
    });
  });
}

/// Square cells around the centre, each showing the image scaled and turned about its own middle.
Image opTile(const FilterArguments& a) {
  const Image image = a.image(0);
  const QPointF center = a.point(1);
  const double scale = std::max(std::abs(a.number(2)), 1e-3);
  const double angle = a.number(3);
  const double width = std::max(a.number(4), 1.0);
  return ComputedImage::infinite({image}, [=](const QRect& area) {
    const PixelReader reader(image,
                             image.isInfinite() ? grown(area, farthestReach) : image.extent());
    return paintArea(area, [&](double x, double y) {
      const QPointF d = turned(QPointF(x, y) - center, -angle);
      const QPointF cell(std::floor(d.x() / width + 0.5) * width,
                         std::floor(d.y() / width + 0.5) * width);
      const QPointF p = center + cell + (d - cell) / scale;
      return reader.sample(p.x(), p.y());
    });
  });
}

}  // namespace

ImageFilters distortionFilters() {
  using namespace inputs;
  constexpr auto alike = "looks alike, but not pixel for pixel";
  const FilterInput radius = length("inputRadius", 300);
  return {
      {"CIBumpDistortion", {image(), center(), radius, number("inputScale", 0.5)}, bump, alike},
      {"CIPinchDistortion", {image(), center(), radius, number("inputScale", 0.5)}, pinch, alike},
      {"CITwirlDistortion", {image(), center(), radius, angle("inputAngle", 180)}, twirl, alike},
      {"CIVortexDistortion", {image(), center(), radius, angle("inputAngle", 3240)}, vortex, alike},
      {"CIHoleDistortion", {image(), center(), length("inputRadius", 150)}, hole, alike},
      {"CICircleSplashDistortion", {image(), center(), length("inputRadius", 150)}, circleSplash},
      {"CITorusLensDistortion",
       {image(), center(), length("inputRadius", 160), length("inputWidth", 80),
        number("inputRefraction", 1.7)},
       torusLens,
       alike},
      {"CIDisplacementDistortion",
       {image(), image("inputDisplacementImage"), length("inputScale", 50)},
       displacement},
      {"CIGlassDistortion",
       {image(), image("inputTexture"), center(), length("inputScale", 200)},
       glass,
       alike},
      {"CIKaleidoscope", {image(), number("inputCount", 6), center(), angle()}, kaleidoscope},
      {"CIOpTile",
       {image(), center(), number("inputScale", 2.8), angle(), length("inputWidth", 65)},
       opTile,
       alike},
  };
}

}  // namespace runtime::image
