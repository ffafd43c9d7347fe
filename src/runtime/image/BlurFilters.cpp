#include <QtMath>
#include <array>

#include "runtime/image/Blur.h"
#include "runtime/image/ComputedImage.h"
#include "runtime/image/ImageFilter.h"
#include "runtime/image/PixelReader.h"

namespace runtime::image {

namespace {

constexpr int mostTaps = 128;

/// Rounds a length of a port into whole pixels.
int wholeLength(double v, int most) {
  return std::isnan(v) ? 0 : static_cast<int>(std::clamp(std::round(v), 0.0, double(most)));
}

Image gaussian(const FilterArguments& a) {
  return gaussianBlurred(a.image(0), a.number(1));
}

Image box(const FilterArguments& a) {
  return boxBlurred(a.image(0), wholeLength(a.number(1), mostTaps));
}

/// A quick blur of several passes; few control values, so a Gaussian of the same width does.
Image cheap(const FilterArguments& a) {
  const double passes = std::clamp(a.number(1), 0.0, 20.0);
  return gaussianBlurred(a.image(0), std::sqrt(passes) * std::clamp(a.number(2), 0.0, 50.0));
}

/// Mean of samples at p + offset(p, t), t from −1 to 1.
template <typename Offset>
Image smeared(const Image& image, int reach, int taps, const Offset& offset) {
  const auto render = [=](const QRect& area) {
    const PixelReader reader(image, grown(area, reach + 1));
    return paintArea(area, [&](double x, double y) {
      Pixel sum;
      for (int i = 0; i < taps; ++i) {
        const QPointF p = QPointF(x, y) + offset(QPointF(x, y), (2.0 * i + 1) / taps - 1);
        sum += reader.sample(p.x(), p.y());
      }
      return sum * (1.0F / static_cast<float>(taps));
    });
  };
  if (image.isInfinite()) return ComputedImage::infinite({image}, render);
  return ComputedImage::finite(grown(image.extent(), reach), {image}, render);
}

Image disc(const FilterArguments& a) {
  const Image& image = a.image(0);
  const int radius = wholeLength(a.number(1), 32);
  if (radius == 0) return image;
  const auto render = [image, radius](const QRect& area) {
    const PixelReader reader(image, grown(area, radius));
    return paintArea(area, [&](double x, double y) {
      Pixel sum;
      int count = 0;
      for (int v = -radius; v <= radius; ++v)
        for (int u = -radius; u <= radius; ++u)
          if (u * u + v * v <= radius * radius) {
            sum += reader.nearest(x + u, y + v);
            ++count;
          }
      return sum * (1.0F / static_cast<float>(count));
    });
  };
  if (image.isInfinite()) return ComputedImage::infinite({image}, render);
  return ComputedImage::finite(grown(image.extent(), radius), {image}, render);
}

Image motion(const FilterArguments& a) {
  const int radius = wholeLength(a.number(1), 500);
  if (radius == 0) return a.image(0);
  const QPointF along = QPointF(std::cos(a.number(2)), std::sin(a.number(2))) * radius;
  return smeared(a.image(0), radius, std::min(2 * radius + 1, mostTaps),
                 [along](const QPointF&, double t) { return along * t; });
}

Image zoom(const FilterArguments& a) {
  // The amount is the share of the way to the centre, in percent, over which a pixel is smeared.
  const double share = std::clamp(a.number(2), 0.0, 200.0) / 100;
  const Image& image = a.image(0);
  if (share == 0) return image;
  const QRect e = image.extent();
  const QPointF center = a.point(1);
  const double farthest =
      image.isInfinite()
          ? 500
          : std::hypot(std::max(std::abs(e.x() - center.x()), std::abs(e.right() - center.x())),
                       std::max(std::abs(e.y() - center.y()), std::abs(e.bottom() - center.y())));
  const int reach = wholeLength(farthest * share / 2, 1000);
  return smeared(image, reach, 64,
                 [=](const QPointF& p, double t) { return (center - p) * (t * share / 2); });
}

/// A new image from each pixel of the image and the same pixel of its blurred copy.
template <typename F>
Image withBlurred(const Image& image, double radius, const F& f) {
  const Image blurred = gaussianBlurred(image, radius);
  return ComputedImage::like(blurred, {image, blurred}, [=](const QRect& area) {
    const PixelReader sharp(image, area);
    const PixelReader soft(blurred, area);
    return paintArea(
        area, [&](double x, double y) { return f(sharp.nearest(x, y), soft.nearest(x, y)); });
  });
}

Image bloom(const FilterArguments& a) {
  return withBlurred(a.image(0), a.number(1), [k = a.single(2)](Pixel s, Pixel b) {
    const Pixel glow = b * k;
    return (s + glow - s * glow).clamped();
  });
}

Image gloom(const FilterArguments& a) {
  const Image dull = withBlurred(a.image(0), a.number(1), [k = a.single(2)](Pixel s, Pixel b) {
    const Pixel low{std::min(s.r, b.r), std::min(s.g, b.g), std::min(s.b, b.b), s.a};
    return mix(s, low, std::clamp(k, 0.0F, 1.0F));
  });
  return a.image(0).isInfinite() ? dull : cropped(dull, a.image(0).extent());
}

Image unsharp(const FilterArguments& a) {
  return withBlurred(a.image(0), a.number(1),
                     [k = a.single(2)](Pixel s, Pixel b) { return (s + (s - b) * k).clamped(); });
}

Image sharpen(const FilterArguments& a) {
  const Image sharp = withBlurred(a.image(0), 1, [k = a.single(1)](Pixel s, Pixel b) {
    const float more = k * 2 * (s.luminance() - b.luminance());
    return Pixel{s.r + more, s.g + more, s.b + more, s.a}.clamped();
  });
  return a.image(0).isInfinite() ? sharp : cropped(sharp, a.image(0).extent());
}

Image median(const FilterArguments& a) {
  const Image& image = a.image(0);
  return ComputedImage::like(image, {image}, [image](const QRect& area) {
    const PixelReader reader(image, grown(area, 1), PixelReader::Outside::Edge);
    return paintArea(area, [&](double x, double y) {
      std::array<Pixel, 9> near;
      for (size_t i = 0; i < 9; ++i)
        near[i] =
            reader.nearest(x + static_cast<double>(i % 3) - 1, y + static_cast<double>(i / 3) - 1);
      const auto middle = [&near](float Pixel::*c) {
        std::nth_element(near.begin(), near.begin() + 4, near.end(),
                         [c](const Pixel& p, const Pixel& q) { return p.*c < q.*c; });
        return near[4].*c;
      };
      Pixel out;
      for (float Pixel::*c : {&Pixel::r, &Pixel::g, &Pixel::b, &Pixel::a}) out.*c = middle(c);
      return out;
    });
  });
}

Image noiseReduction(const FilterArguments& a) {
  const auto level = std::max(a.single(1), 0.0F);
  const auto sharpness = a.single(2);
  const Image clean = withBlurred(a.image(0), 1.5, [=](Pixel s, Pixel b) {
    // Small differences from the surroundings are noise, large ones are detail.
    const float difference = std::abs(s.luminance() - b.luminance());
    const float detail = smoothStep(level, 3 * level, difference);
    return mix(b, s + (s - b) * sharpness, detail).clamped();
  });
  return a.image(0).isInfinite() ? clean : cropped(clean, a.image(0).extent());
}

}  // namespace

ImageFilters blurFilters() {
  using namespace inputs;
  return {
      {"CIGaussianBlur", {image(), length("inputRadius", 10)}, gaussian},
      {"CIBoxBlur", {image(), length("inputRadius", 10)}, box, "the radius is at most 128 pixels"},
      {"CICheapBlur",
       {image(), number("inputPasses", 1), number("inputSampling", 1)},
       cheap,
       "a Gaussian blur of about the same width"},
      {"CIDiscBlur", {image(), length("inputRadius", 8)}, disc, "the radius is at most 32 pixels"},
      {"CIMotionBlur",
       {image(), length("inputRadius", 20), angle()},
       motion,
       "all pixels of the way have the same weight"},
      {"CIZoomBlur",
       {image(), center(), number("inputAmount", 20)},
       zoom,
       "the amount is taken as a percentage of the distance from the centre"},
      {"CIMedianFilter", {image()}, median},
      {"CINoiseReduction",
       {image(), number("inputNoiseLevel", 0.02), number("inputSharpness", 0.4)},
       noiseReduction,
       "looks alike, but not pixel for pixel"},
      {"CISharpenLuminance",
       {image(), number("inputSharpness", 0.4)},
       sharpen,
       "looks alike, but not pixel for pixel"},
      {"CIUnsharpMask",
       {image(), length("inputRadius", 2.5), number("inputIntensity", 0.5)},
       unsharp},
      {"CIBloom",
       {image(), length("inputRadius", 10), number("inputIntensity", 1)},
       bloom,
       "the glow is screened over the image"},
      {"CIGloom",
       {image(), length("inputRadius", 10), number("inputIntensity", 1)},
       gloom,
       "looks alike, but not pixel for pixel"},
  };
}

}  // namespace runtime::image
