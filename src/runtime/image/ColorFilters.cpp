#include "runtime/image/ComputedImage.h"
#include "runtime/image/ImageFilter.h"
#include "runtime/image/PixelReader.h"

namespace runtime::image {

namespace {

/// Each premultiplied pixel p of the image becomes f(p).
template <typename F>
Image mapped(const Image& image, const F& f) {
  return ComputedImage::like(
      image, {image}, [image, f](const QRect& area) { return mapPixels(image.pixels(area), f); });
}

/// Each pixel becomes f(p) with straight components; results are clamped.
template <typename F>
Image mapStraight(const Image& image, const F& f) {
  return mapped(image, [f](Pixel p) { return f(p.straight()).clamped().premultiplied(); });
}

Pixel grey(float v, float alpha) {
  return {v, v, v, alpha};
}

/// f for red, green and blue alike; alpha stays.
template <typename F>
Image mapComponents(const Image& image, const F& f) {
  return mapStraight(image, [f](Pixel p) { return Pixel{f(p.r), f(p.g), f(p.b), p.a}; });
}

Image colorControls(const FilterArguments& a) {
  return mapStraight(a.image(0), [saturation = a.single(1), brightness = a.single(2),
                                  contrast = a.single(3)](Pixel p) {
    const float l = p.luminance();
    const auto f = [&](float c) {
      return (l + (c - l) * saturation + brightness - 0.5F) * contrast + 0.5F;
    };
    return Pixel{f(p.r), f(p.g), f(p.b), p.a};
  });
}

Image exposure(const FilterArguments& a) {
  return mapComponents(a.image(0), [k = std::exp2(a.single(1))](float c) { return c * k; });
}

Image gamma(const FilterArguments& a) {
  return mapComponents(a.image(0), [k = a.single(1)](float c) { return std::pow(c, k); });
}

/// Rotates the chroma (I and Q of YIQ) and keeps the luma.
Image hue(const FilterArguments& a) {
  const auto cosine = static_cast<float>(std::cos(a.number(1)));
  const auto sine = static_cast<float>(std::sin(a.number(1)));
  return mapStraight(a.image(0), [=](Pixel p) {
    const float y = 0.299F * p.r + 0.587F * p.g + 0.114F * p.b;
    const float i = 0.5959F * p.r - 0.2746F * p.g - 0.3213F * p.b;
    const float q = 0.2115F * p.r - 0.5227F * p.g + 0.3112F * p.b;
    const float u = i * cosine + q * sine;
    const float v = q * cosine - i * sine;
    return Pixel{y + 0.9563F * u + 0.6210F * v, y - 0.2721F * u - 0.6474F * v,
                 y - 1.1070F * u + 1.7046F * v, p.a};
  });
}

Image colorMatrix(const FilterArguments& a) {
  const auto row = [&a](size_t i) {
    const auto& v = a.vector(i);
    return Pixel{static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2]),
                 static_cast<float>(v[3])};
  };
  return mapStraight(
      a.image(0), [r = row(1), g = row(2), b = row(3), alpha = row(4), bias = row(5)](Pixel p) {
        const auto dot = [p](Pixel v) { return v.r * p.r + v.g * p.g + v.b * p.b + v.a * p.a; };
        return Pixel{dot(r), dot(g), dot(b), dot(alpha)} + bias;
      });
}

Image invert(const FilterArguments& a) {
  return mapComponents(a.image(0), [](float c) { return 1 - c; });
}

Image monochrome(const FilterArguments& a) {
  const foundation::Color c = a.color(1);
  const Pixel tint{static_cast<float>(c.red), static_cast<float>(c.green),
                   static_cast<float>(c.blue), 1};
  return mapStraight(a.image(0), [tint, k = a.single(2)](Pixel p) {
    const float l = p.luminance();
    return mix(p, Pixel{tint.r * l, tint.g * l, tint.b * l, p.a}, k);
  });
}

Image posterize(const FilterArguments& a) {
  const float levels = std::clamp(std::round(a.single(1)), 2.0F, 256.0F);
  return mapComponents(a.image(0), [levels](float c) {
    return std::min(std::floor(c * levels), levels - 1) / (levels - 1);
  });
}

Image falseColor(const FilterArguments& a) {
  return mapped(a.image(0),
                [dark = Pixel::fromColor(a.color(1)), bright = Pixel::fromColor(a.color(2))](
                    Pixel p) { return mix(dark, bright, p.straight().luminance()) * p.a; });
}

Image sepia(const FilterArguments& a) {
  return mapStraight(a.image(0), [k = a.single(1)](Pixel p) {
    const Pixel brown{0.393F * p.r + 0.769F * p.g + 0.189F * p.b,
                      0.349F * p.r + 0.686F * p.g + 0.168F * p.b,
                      0.272F * p.r + 0.534F * p.g + 0.131F * p.b, p.a};
    return mix(p, brown, k);
  });
}

Image maskToAlpha(const FilterArguments& a) {
  return mapped(a.image(0), [](Pixel p) { return grey(p.luminance(), p.luminance()); });
}

Image maximumComponent(const FilterArguments& a) {
  return mapped(a.image(0), [](Pixel p) { return grey(std::max({p.r, p.g, p.b}), p.a); });
}

Image minimumComponent(const FilterArguments& a) {
  return mapped(a.image(0), [](Pixel p) { return grey(std::min({p.r, p.g, p.b}), p.a); });
}

Image whitePoint(const FilterArguments& a) {
  const Pixel white = Pixel::fromColor(a.color(1));
  return mapped(a.image(0), [white](Pixel p) { return p * Pixel{white.r, white.g, white.b, 1}; });
}

/// The luminance looked up along the middle row of another image.
Image colorMap(const FilterArguments& a) {
  const Image& image = a.image(0);
  const Image& gradient = a.image(1);
  if (gradient.isNull() || gradient.isInfinite()) return image;
  return ComputedImage::like(image, {image, gradient}, [image, gradient](const QRect& area) {
    const QRect e = gradient.extent();
    const QRect line(e.x(), e.y() + e.height() / 2, e.width(), 1);
    const PixelReader map(gradient, line, PixelReader::Outside::Edge);
    return mapPixels(image.pixels(area), [&](Pixel p) {
      const double x = line.x() + p.straight().luminance() * (line.width() - 1) + 0.5;
      return map.sample(x, line.y() + 0.5) * p.a;
    });
  });
}

Image vignette(const FilterArguments& a) {
  const Image& image = a.image(0);
  const double radius = std::max(a.number(1), 0.01);
  const double intensity = a.number(2);
  if (image.isInfinite() || intensity == 0) return image;
  return ComputedImage::like(image, {image}, [=](const QRect& area) {
    const QRectF e = image.extent();
    const double half = std::hypot(e.width(), e.height()) / 2;
    const PixelReader reader(image, area);
    return paintArea(area, [&](double x, double y) {
      const double d = std::hypot(x - e.center().x(), y - e.center().y()) / half;
      const double dark = std::clamp(intensity * d * d / (radius * radius), -1.0, 1.0);
      const Pixel p = reader.nearest(x, y);
      const auto k = static_cast<float>(1 - dark);
      return Pixel{p.r * k, p.g * k, p.b * k, p.a};
    });
  });
}

}  // namespace

ImageFilters colorFilters() {
  using namespace inputs;
  return {
      {"CIColorControls",
       {image(), number("inputSaturation", 1), number("inputBrightness", 0),
        number("inputContrast", 1)},
       colorControls},
      {"CIExposureAdjust", {image(), number("inputEV", 0.5)}, exposure},
      {"CIGammaAdjust", {image(), number("inputPower", 0.75)}, gamma},
      {"CIHueAdjust", {image(), angle()}, hue},
      {"CIColorMatrix",
       {image(), vector("inputRVector", {1, 0, 0, 0}), vector("inputGVector", {0, 1, 0, 0}),
        vector("inputBVector", {0, 0, 1, 0}), vector("inputAVector", {0, 0, 0, 1}),
        vector("inputBiasVector", {})},
       colorMatrix},
      {"CIColorInvert", {image()}, invert},
      {"CIColorMonochrome",
       {image(), color("inputColor", {0.6, 0.45, 0.3, 1}), number("inputIntensity", 1)},
       monochrome},
      {"CIColorPosterize", {image(), number("inputLevels", 6)}, posterize},
      {"CIFalseColor",
       {image(), color("inputColor0", {0.3, 0, 0, 1}), color("inputColor1", {1, 0.9, 0.8, 1})},
       falseColor},
      {"CISepiaTone", {image(), number("inputIntensity", 1)}, sepia},
      {"CIMaskToAlpha", {image()}, maskToAlpha},
      {"CIMaximumComponent", {image()}, maximumComponent},
      {"CIMinimumComponent", {image()}, minimumComponent},
      {"CIWhitePointAdjust", {image(), color("inputColor", white)}, whitePoint},
      {"CIColorMap", {image(), image("inputGradientImage")}, colorMap},
      {"CIVignette",
       {image(), number("inputRadius", 1), number("inputIntensity", 0)},
       vignette,
       "looks alike, but not pixel for pixel"},
  };
}

}  // namespace runtime::image
