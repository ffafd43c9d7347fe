#include "runtime/draw/BitmapCache.h"

#include <cmath>

namespace runtime {

namespace {

/// Levels of a channel weighted by an area, for averages.
struct Sum {
  std::array<double, 4> channels{};
  double weight = 0;
  void add(QRgb pixel, double w) {
    channels[0] += qRed(pixel) * w;
    channels[1] += qGreen(pixel) * w;
    channels[2] += qBlue(pixel) * w;
    channels[3] += qAlpha(pixel) * w;
    weight += w;
  }
  [[nodiscard]] QRgb mean() const {
    const auto level = [this](size_t i) { return static_cast<int>(channels[i] / weight + 0.5); };
    return qRgba(level(0), level(1), level(2), level(3));
  }
};

QRgb meanOfTwo(QRgb a, QRgb b) {
  // (a + b + 1) / 2 in each byte.
  return (a | b) - (((a ^ b) & 0xFEFEFEFEU) >> 1U);
}

/// Half as wide, rounded up. With an odd width each new pixel covers a little less than two.
QImage halvedAcross(const QImage& image) {
  const int width = (image.width() + 1) / 2;
  QImage result(width, image.height(), QImage::Format_ARGB32_Premultiplied);
  const double step = static_cast<double>(image.width()) / width;
  for (int y = 0; y < image.height(); ++y) {
    const auto* in = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    auto* out = reinterpret_cast<QRgb*>(result.scanLine(y));
    if (image.width() % 2 == 0) {
      for (int x = 0; x < width; ++x) out[x] = meanOfTwo(in[2 * x], in[2 * x + 1]);
      continue;
    }
    for (int x = 0; x < width; ++x) {
      Sum sum;
      const double left = x * step;
      const double right = left + step;
      for (int i = static_cast<int>(left); i < image.width() && i < right; ++i)
        sum.add(in[i], std::min<double>(i + 1, right) - std::max<double>(i, left));
      out[x] = sum.mean();
    }
  }
  return result;
}

/// Half as high, rounded up.
QImage halvedDown(const QImage& image) {
  const int height = (image.height() + 1) / 2;
  QImage result(image.width(), height, QImage::Format_ARGB32_Premultiplied);
  const double step = static_cast<double>(image.height()) / height;
  const auto row = [&image](int y) {
    return reinterpret_cast<const QRgb*>(image.constScanLine(y));
  };
  for (int y = 0; y < height; ++y) {
    auto* out = reinterpret_cast<QRgb*>(result.scanLine(y));
    const double top = y * step;
    const double bottom = top + step;
    const bool even = image.height() % 2 == 0;
    for (int x = 0; x < image.width(); ++x) {
      if (even) {
        out[x] = meanOfTwo(row(2 * y)[x], row(2 * y + 1)[x]);
        continue;
      }
      Sum sum;
      for (int i = static_cast<int>(top); i < image.height() && i < bottom; ++i)
        sum.add(row(i)[x], std::min<double>(i + 1, bottom) - std::max<double>(i, top));
      out[x] = sum.mean();
    }
  }
  return result;
}

QRgb multiplied(QRgb pixel, const std::array<quint32, 4>& f) {
  constexpr quint32 half = BitmapChange::unity / 2;
  const auto one = [](int level, quint32 factor) {
    return static_cast<int>((static_cast<quint32>(level) * factor + half) >> 16U);
  };
  return qRgba(one(qRed(pixel), f[0]), one(qGreen(pixel), f[1]), one(qBlue(pixel), f[2]),
               one(qAlpha(pixel), f[3]));
}

/// Red, green and blue by their own factor and the common one; alpha by the common one.
QImage multiplied(const QImage& image, const std::array<quint32, 4>& factors) {
  std::array<quint32, 4> f = factors;
  for (size_t i = 0; i < 3; ++i)
    f[i] = static_cast<quint32>((quint64{factors[i]} * factors[3] + BitmapChange::unity / 2) >> 16);
  QImage result(image.size(), QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    const auto* in = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    auto* out = reinterpret_cast<QRgb*>(result.scanLine(y));
    for (int x = 0; x < image.width(); ++x) out[x] = multiplied(in[x], f);
  }
  return result;
}

/// 0…unity, of a premultiplied pixel.
quint32 luminance(QRgb pixel) {
  const double y = 0.2126 * qRed(pixel) + 0.7152 * qGreen(pixel) + 0.0722 * qBlue(pixel);
  return static_cast<quint32>(y / 255 * BitmapChange::unity + 0.5);
}

QImage masked(const QImage& image, const QImage& mask) {
  const QImage stretched =
      mask.size() == image.size()
          ? mask
          : mask.scaled(image.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                .convertToFormat(QImage::Format_ARGB32_Premultiplied);
  QImage result(image.size(), QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    const auto* in = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    const auto* by = reinterpret_cast<const QRgb*>(stretched.constScanLine(y));
    auto* out = reinterpret_cast<QRgb*>(result.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const quint32 f = luminance(by[x]);
      out[x] = multiplied(in[x], {f, f, f, f});
    }
  }
  return result;
}

QImage make(const QImage& bitmap, const BitmapChange& change) {
  QImage image = bitmap;
  if (!change.mask.isNull()) image = masked(image, change.mask);
  for (int i = 0; i < change.halvingsX && image.width() > 1; ++i) image = halvedAcross(image);
  for (int i = 0; i < change.halvingsY && image.height() > 1; ++i) image = halvedDown(image);
  if (change.factors != BitmapChange().factors) image = multiplied(image, change.factors);
  return image;
}

quint32 factorOf(double value) {
  return value > 0 ? static_cast<quint32>(std::min(value, 1.0) * BitmapChange::unity + 0.5) : 0;
}

}  // namespace

bool BitmapChange::isNothing() const {
  return factors == BitmapChange().factors && mask.isNull() && halvingsX == 0 && halvingsY == 0;
}

void BitmapChange::tint(const foundation::Color& color) {
  factors[0] = factorOf(color.red);
  factors[1] = factorOf(color.green);
  factors[2] = factorOf(color.blue);
}

void BitmapChange::fade(double opacity) {
  factors[3] = factorOf(opacity);
}

void BitmapChange::reduce(const QSize& size, const QSizeF& pixels) {
  // Bilinear sampling sees two pixels a side, so up to about one and three quarters it needs none.
  const auto halvings = [](double from, double to) {
    if (!(to > 0) || !(from > to)) return 0;
    return std::clamp(static_cast<int>(std::floor(std::log2(from / to) + 0.2)), 0, 15);
  };
  halvingsX = halvings(size.width(), std::max(pixels.width(), 0.5));
  halvingsY = halvings(size.height(), std::max(pixels.height(), 0.5));
}

BitmapCache& BitmapCache::shared() {
  static BitmapCache cache(qsizetype{96} << 20);
  return cache;
}

QImage BitmapCache::changed(const QImage& bitmap, const BitmapChange& change) {
  if (bitmap.isNull() || change.isNothing()) return bitmap;
  const Key key{bitmap.cacheKey(), change.mask.isNull() ? 0 : change.mask.cacheKey(),
                change.factors, change.halvingsX, change.halvingsY};
  {
    const std::lock_guard lock(m_mutex);
    ++m_calls;
    const auto found = m_index.constFind(key);
    if (found != m_index.constEnd()) {
      m_entries.splice(m_entries.begin(), m_entries, *found);
      (*found)->used = m_calls;
      return (*found)->image;
    }
  }
  // Made outside the lock: two threads may make the same, which is cheaper than waiting.
  QImage image = make(bitmap, change);
  insert(key, image);
  return image;
}

qsizetype BitmapCache::bytes() const {
  const std::lock_guard lock(m_mutex);
  return m_bytes;
}

void BitmapCache::insert(const Key& key, const QImage& image) {
  const std::lock_guard lock(m_mutex);
  if (m_index.contains(key)) return;
  m_entries.push_front({key, image, m_calls});
  m_index.insert(key, m_entries.begin());
  m_bytes += image.sizeInBytes();
  const auto isPast = [this] {
    return m_bytes > m_limit ||
           (m_bytes > usualBytes && m_entries.back().used + patience < m_calls);
  };
  while (m_entries.size() > 1 && isPast()) {
    m_bytes -= m_entries.back().image.sizeInBytes();
    m_index.remove(m_entries.back().key);
    m_entries.pop_back();
  }
}

}  // namespace runtime
