#include "runtime/image/Blur.h"

#include <vector>

#include "runtime/image/ComputedImage.h"
#include "runtime/image/PixelReader.h"

namespace runtime::image {

namespace {

constexpr double largestSigma = 500;
constexpr double finestSigma = 4;  // wider blurs work on a smaller copy
constexpr int largestBox = 128;    // sums of more pixels are no longer exact in single precision

/// Four floats a pixel, components of 0…255, rows upwards from the area's lower edge.
struct FloatImage {
  int width = 0;
  int height = 0;
  std::vector<float> data;

  FloatImage(int width, int height)
      : width(width),
        height(height),
        data(4 * static_cast<size_t>(width) * static_cast<size_t>(height)) {}
  float* row(int y) {
    return data.data() + 4 * static_cast<size_t>(width) * static_cast<size_t>(y);
  }
  [[nodiscard]] const float* row(int y) const {
    return data.data() + 4 * static_cast<size_t>(width) * static_cast<size_t>(y);
  }
};

/// Means of blocks of factor × factor pixels; the area starts at a multiple of the factor. The
/// image is read in bands so that only the small copy is held as a whole.
FloatImage shrunk(const Image& image, const QRect& area, int factor) {
  FloatImage out(area.width() / factor, area.height() / factor);
  const QRect used = image.isInfinite() ? area : area & image.extent();
  const auto scale = 1.0F / static_cast<float>(factor * factor);
  constexpr int bandRows = 256;
  for (int from = used.y(); from < used.y() + used.height(); from += bandRows) {
    const QRect band(used.x(), from, used.width(),
                     std::min(bandRows, used.y() + used.height() - from));
    const QImage pixels = image.pixels(band);
    if (pixels.isNull()) continue;
    for (int y = 0; y < band.height(); ++y) {
      const auto* line = reinterpret_cast<const QRgb*>(pixels.constScanLine(band.height() - 1 - y));
      float* target = out.row((band.y() + y - area.y()) / factor);
      for (int x = 0; x < band.width(); ++x) {
        float* p = target + 4 * ((band.x() + x - area.x()) / factor);
        p[0] += static_cast<float>(qRed(line[x])) * scale;
        p[1] += static_cast<float>(qGreen(line[x])) * scale;
        p[2] += static_cast<float>(qBlue(line[x])) * scale;
        p[3] += static_cast<float>(qAlpha(line[x])) * scale;
      }
    }
  }
  return out;
}

std::vector<float> gaussianWeights(double sigma) {
  const int reach = std::max(1, qCeil(3 * sigma));
  std::vector<double> weights;
  double sum = 0;
  for (int i = -reach; i <= reach; ++i) {
    weights.push_back(std::exp(-0.5 * i * i / (sigma * sigma)));
    sum += weights.back();
  }
  std::vector<float> result;
  for (const double w : weights) result.push_back(static_cast<float>(w / sum));
  return result;
}

void addScaled(float* target, const float* source, float weight, int count) {
  for (int i = 0; i < count; ++i) target[i] += source[i] * weight;
}

FloatImage convolved(const FloatImage& in, const std::vector<float>& weights) {
  const int reach = static_cast<int>(weights.size()) / 2;
  FloatImage across(in.width, in.height);
  for (int y = 0; y < in.height; ++y)
    for (int k = -reach; k <= reach; ++k) {
      const int first = std::max(0, -k);  // target pixels whose source x + k is inside
      const int last = std::min(in.width, in.width - k);
      if (last > first)
        addScaled(across.row(y) + 4 * first, in.row(y) + 4 * (first + k),
                  weights[static_cast<size_t>(k + reach)], 4 * (last - first));
    }
  FloatImage out(in.width, in.height);
  for (int y = 0; y < in.height; ++y)
    for (int k = std::max(-reach, -y); k <= std::min(reach, in.height - 1 - y); ++k)
      addScaled(out.row(y), across.row(y + k), weights[static_cast<size_t>(k + reach)],
                4 * in.width);
  return out;
}

Pixel pixelAt(const FloatImage& image, int x, int y) {
  if (x < 0 || y < 0 || x >= image.width || y >= image.height) return {};
  const float* p = image.row(y) + 4 * x;
  constexpr float k = 1.0F / 255;
  return {p[0] * k, p[1] * k, p[2] * k, p[3] * k};
}

Pixel smoothAt(const FloatImage& image, double x, double y) {
  const int column = qFloor(x - 0.5);
  const int row = qFloor(y - 0.5);
  const auto fx = static_cast<float>(x - 0.5 - column);
  const auto fy = static_cast<float>(y - 0.5 - row);
  return mix(mix(pixelAt(image, column, row), pixelAt(image, column + 1, row), fx),
             mix(pixelAt(image, column, row + 1), pixelAt(image, column + 1, row + 1), fx), fy);
}

int alignedDown(int v, int step) {
  return qFloor(static_cast<double>(v) / step) * step;
}

QImage renderGaussian(const Image& image, const QRect& area, double sigma) {
  int factor = 1;
  while (sigma / factor > finestSigma) factor *= 2;
  const QRect wide = grown(area, qCeil(3 * sigma) + 2 * factor);
  const QPoint corner(alignedDown(wide.x(), factor), alignedDown(wide.y(), factor));
  const QRect source(corner,
                     QSize(alignedDown(wide.x() + wide.width() - corner.x(), factor) + factor,
                           alignedDown(wide.y() + wide.height() - corner.y(), factor) + factor));
  // Averaging blocks and interpolating between them blurs as well; the weights make up the rest.
  const double f = factor;
  const double own = factor == 1 ? 0 : (f * f - 1) / 12 + f * f / 6;
  const auto weights = gaussianWeights(std::sqrt(std::max(sigma * sigma - own, 0.01)) / f);
  const FloatImage blurred = convolved(shrunk(image, source, factor), weights);
  return paintArea(area, [&](double x, double y) {
    const double u = (x - source.x()) / f;
    const double v = (y - source.y()) / f;
    return factor == 1 ? pixelAt(blurred, qFloor(u), qFloor(v)) : smoothAt(blurred, u, v);
  });
}

/// Running sums of 2·radius + 1 neighbours, `stride` floats apart, along one line.
void boxLine(const float* in, float* out, int count, int stride, int radius) {
  float sum[4] = {};
  const auto add = [&](int i, float sign) {
    if (i < 0 || i >= count) return;
    for (int c = 0; c < 4; ++c) sum[c] += sign * in[i * stride + c];
  };
  for (int i = 0; i < radius; ++i) add(i, 1);
  for (int i = 0; i < count; ++i) {
    add(i + radius, 1);
    add(i - radius - 1, -1);
    for (int c = 0; c < 4; ++c) out[i * stride + c] = sum[c];
  }
}

QImage renderBox(const Image& image, const QRect& area, int radius) {
  const QRect source = grown(area, radius);
  const FloatImage in = shrunk(image, source, 1);
  FloatImage across(in.width, in.height);
  for (int y = 0; y < in.height; ++y) boxLine(in.row(y), across.row(y), in.width, 4, radius);
  FloatImage sums(in.width, in.height);
  for (int x = 0; x < in.width; ++x)
    boxLine(across.row(0) + 4 * x, sums.row(0) + 4 * x, in.height, 4 * in.width, radius);
  const auto side = static_cast<float>(2 * radius + 1);
  return paintArea(area, [&](double x, double y) {
    return pixelAt(sums, qFloor(x) - source.x(), qFloor(y) - source.y()) * (1 / (side * side));
  });
}

/// Renders wide areas in bands, as the work in floats takes far more memory than the result.
template <typename F>
QImage inBands(const QRect& area, const F& render) {
  constexpr int mostPixels = 2'000'000;
  const int rows = std::max(64, mostPixels / area.width());
  if (area.height() <= rows) return render(area);
  QImage out(area.size(), QImage::Format_ARGB32_Premultiplied);
  for (int top = 0; top < area.height() && !out.isNull(); top += rows) {
    const int height = std::min(rows, area.height() - top);
    const QImage band =
        render(QRect(area.x(), area.y() + area.height() - top - height, area.width(), height));
    for (int row = 0; row < height; ++row)
      std::copy_n(band.constScanLine(row), 4 * area.width(), out.scanLine(top + row));
  }
  return out;
}

}  // namespace

Image gaussianBlurred(const Image& image, double sigma) {
  if (image.isNull() || !(sigma > 0.05)) return image;
  sigma = std::min(sigma, largestSigma);
  const auto render = [image, sigma](const QRect& area) {
    return inBands(area, [&](const QRect& band) { return renderGaussian(image, band, sigma); });
  };
  if (image.isInfinite()) return ComputedImage::infinite({image}, render);
  return ComputedImage::finite(grown(image.extent(), qCeil(3 * sigma)), {image}, render);
}

Image boxBlurred(const Image& image, int radius) {
  if (image.isNull() || radius <= 0) return image;
  radius = std::min(radius, largestBox);
  const auto render = [image, radius](const QRect& area) {
    return inBands(area, [&](const QRect& band) { return renderBox(image, band, radius); });
  };
  if (image.isInfinite()) return ComputedImage::infinite({image}, render);
  return ComputedImage::finite(grown(image.extent(), radius), {image}, render);
}

}  // namespace runtime::image
