#include "runtime/image/Resampling.h"

#include "runtime/image/ComputedImage.h"
#include "runtime/image/PixelReader.h"

namespace runtime::image {

namespace {

constexpr int mostTaps = 8;

/// Samples an image at the places that the inverse of a map gives, averaging where it shrinks.
class MapSampler {
 public:
  explicit MapSampler(const QTransform& inverse) : m_inverse(inverse) {
    // How many source pixels one target pixel covers along each of its sides.
    const double across = std::hypot(inverse.m11(), inverse.m12());
    const double up = std::hypot(inverse.m21(), inverse.m22());
    m_columns = taps(across);
    m_rows = taps(up);
  }

  template <typename Read>
  Pixel operator()(double x, double y, const Read& read) const {
    Pixel sum;
    for (int row = 0; row < m_rows; ++row)
      for (int column = 0; column < m_columns; ++column) {
        const QPointF p = m_inverse.map(
            QPointF(x + (column + 0.5) / m_columns - 0.5, y + (row + 0.5) / m_rows - 0.5));
        sum += read(p.x(), p.y());
      }
    return sum * (1.0F / static_cast<float>(m_columns * m_rows));
  }

 private:
  static int taps(double pixels) {
    return std::isfinite(pixels) ? std::clamp(qCeil(pixels - 1e-6), 1, mostTaps) : 1;
  }
  QTransform m_inverse;
  int m_columns = 1;
  int m_rows = 1;
};

bool isWholeMove(const QTransform& map) {
  return map.type() <= QTransform::TxTranslate && map.dx() == std::round(map.dx()) &&
         map.dy() == std::round(map.dy()) && std::abs(map.dx()) < 1e6 && std::abs(map.dy()) < 1e6;
}

Image moved(const Image& image, const QPoint& by) {
  const auto render = [image, by](const QRect& a) { return image.pixels(a.translated(-by)); };
  return image.isInfinite() ? ComputedImage::infinite({image}, render)
                            : ComputedImage::finite(image.extent().translated(by), {image}, render);
}

bool isUsable(const QTransform& map, QTransform& inverse) {
  for (const double v : {map.m11(), map.m12(), map.m13(), map.m21(), map.m22(), map.m23(),
                         map.m31(), map.m32(), map.m33()})
    if (!std::isfinite(v)) return false;
  bool ok = false;
  inverse = map.inverted(&ok);
  return ok;
}

}  // namespace

Image transformed(const Image& image, const QTransform& map) {
  if (image.isNull() || map.isIdentity()) return image;
  if (isWholeMove(map)) return moved(image, QPoint(qRound(map.dx()), qRound(map.dy())));
  QTransform inverse;
  if (!isUsable(map, inverse)) return {};
  const auto render = [image, inverse](const QRect& area) {
    const PixelReader reader(image, grown(pixelRect(inverse.mapRect(QRectF(area))), 1));
    const MapSampler sampler(inverse);
    return paintArea(area, [&](double x, double y) {
      return sampler(x, y, [&](double u, double v) { return reader.sample(u, v); });
    });
  };
  if (image.isInfinite()) return ComputedImage::infinite({image}, render);
  return ComputedImage::finite(pixelRect(map.mapRect(QRectF(image.extent()))), {image}, render);
}

Image clampedTo(const Image& image, const QTransform& map) {
  if (image.isNull() || image.isInfinite()) return transformed(image, map);
  QTransform inverse;
  if (!isUsable(map, inverse)) return {};
  return ComputedImage::infinite({image}, [image, inverse](const QRect& area) {
    const PixelReader reader(image, area, PixelReader::Outside::Edge);
    const MapSampler sampler(inverse);
    return paintArea(area, [&](double x, double y) {
      return sampler(x, y, [&](double u, double v) { return reader.sample(u, v); });
    });
  });
}

Image tiled(const Image& image, const QTransform& map) {
  if (image.isNull() || image.isInfinite()) return transformed(image, map);
  QTransform inverse;
  if (!isUsable(map, inverse)) return {};
  return ComputedImage::infinite({image}, [image, inverse](const QRect& area) {
    const QRect extent = image.extent();
    const PixelReader reader(image, extent);
    const MapSampler sampler(inverse);
    const auto wrap = [](double v, int from, int size) {
      const double turns = std::floor((v - from) / size);
      return v - turns * size;
    };
    return paintArea(area, [&](double x, double y) {
      return sampler(x, y, [&](double u, double v) {
        return reader.nearest(wrap(u, extent.x(), extent.width()),
                              wrap(v, extent.y(), extent.height()));
      });
    });
  });
}

Image resized(const Image& image, const QSize& size, const QPoint& origin) {
  if (image.isNull() || image.isInfinite() || size.isEmpty()) return {};
  if (image.size() == size) return moved(image, origin - image.extent().topLeft());
  const QRect extent(origin, size);
  return ComputedImage::finite(extent, {image}, [image, extent](const QRect& area) {
    const QImage whole =
        image.bitmap().scaled(extent.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const int top = extent.y() + extent.height() - area.y() - area.height();
    return whole.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .copy(area.x() - extent.x(), top, area.width(), area.height());
  });
}

QTransform imageTransform(const QPointF& origin, double scaleX, double scaleY, double degrees,
                          const QPointF& move) {
  return QTransform::fromTranslate(-origin.x(), -origin.y()) *
         QTransform::fromScale(scaleX, scaleY) * QTransform().rotate(degrees) *
         QTransform::fromTranslate(origin.x() + move.x(), origin.y() + move.y());
}

}  // namespace runtime::image
