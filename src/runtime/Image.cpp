#include "runtime/Image.h"

#include <QPainter>

namespace runtime {

namespace {

/// Pixels that are there already.
class BitmapSource : public ImageSource {
 public:
  BitmapSource(QImage image, const QPoint& origin)
      : m_image(std::move(image)), m_extent(origin, m_image.size()) {}
  [[nodiscard]] QRect extent() const override { return m_extent; }
  [[nodiscard]] const QImage& bitmap() const override { return m_image; }
  [[nodiscard]] QImage pixels(const QRect& area) const override {
    // Image space has y up, QImage rows run down from the top of the extent.
    const int top = m_extent.y() + m_extent.height() - (area.y() + area.height());
    return m_image.copy(area.x() - m_extent.x(), top, area.width(), area.height());
  }

 private:
  QImage m_image;
  QRect m_extent;
};

}  // namespace

const QImage& ImageSource::bitmap() const {
  if (m_hasBitmap || isInfinite()) return m_bitmap;
  // Made outside the lock, now and then twice: a thread outside the pool of painting threads may
  // need jobs of that pool to make it, whose threads must not wait here for it meanwhile.
  QImage made = pixels(extent());
  const std::lock_guard lock(m_mutex);
  if (!m_hasBitmap) {
    m_bitmap = std::move(made);
    m_hasBitmap = true;
  }
  return m_bitmap;
}

Image Image::fromQImage(const QImage& image, const QPoint& origin) {
  if (image.isNull()) return {};
  return Image(std::make_shared<BitmapSource>(
      image.convertToFormat(QImage::Format_ARGB32_Premultiplied), origin));
}

QImage Image::bitmap() const {
  return m_source ? m_source->bitmap() : QImage();
}

QImage Image::pixels(const QRect& area) const {
  return m_source ? m_source->pixels(area) : QImage();
}

Image Image::withTexturing(const QTransform& matrix, bool repeats) const {
  Image image = *this;
  image.m_textureMatrix = matrix;
  image.m_repeats = repeats;
  return image;
}

}  // namespace runtime
