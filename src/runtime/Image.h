#pragma once

#include <QImage>
#include <QRectF>
#include <QTransform>
#include <atomic>
#include <memory>
#include <mutex>

namespace runtime {

/// Where an image's pixels come from. Image space: pixels, origin lower left, y up. Thread-safe:
/// several frames that share an image may be drawn at once.
class ImageSource {
 public:
  virtual ~ImageSource() = default;
  ImageSource() = default;
  ImageSource(const ImageSource&) = delete;
  ImageSource& operator=(const ImageSource&) = delete;

  /// The area that has pixels, in image space; whole numbers. Meaningless when infinite.
  [[nodiscard]] virtual QRect extent() const = 0;
  [[nodiscard]] virtual bool isInfinite() const { return false; }
  /// The pixels of the area (image space), premultiplied ARGB32, first row on top; transparent
  /// where the image has none.
  [[nodiscard]] virtual QImage pixels(const QRect& area) const = 0;
  /// All pixels of the extent, kept after the first call. Null for infinite images.
  [[nodiscard]] virtual const QImage& bitmap() const;

 private:
  mutable std::mutex m_mutex;
  mutable std::atomic<bool> m_hasBitmap = false;
  mutable QImage m_bitmap;
};

/// A handle to an image and to the way in which it is used as a texture. Cheap to copy; equal
/// handles have the same source.
class Image {
 public:
  Image() = default;
  explicit Image(std::shared_ptr<const ImageSource> source) : m_source(std::move(source)) {}
  /// Takes pixels of any format; the extent starts at the origin (lower left).
  [[nodiscard]] static Image fromQImage(const QImage& image, const QPoint& origin = {});

  [[nodiscard]] bool isNull() const { return !m_source; }
  [[nodiscard]] bool isInfinite() const { return m_source && m_source->isInfinite(); }
  [[nodiscard]] QRect extent() const { return m_source ? m_source->extent() : QRect(); }
  [[nodiscard]] QSize size() const { return extent().size(); }
  /// Premultiplied pixels of the extent; null for no or an infinite image.
  [[nodiscard]] QImage bitmap() const;
  [[nodiscard]] QImage pixels(const QRect& area) const;
  [[nodiscard]] const ImageSource* source() const { return m_source.get(); }
  [[nodiscard]] const std::shared_ptr<const ImageSource>& sharedSource() const { return m_source; }

  /// Texture coordinates (normalised, origin lower left) are mapped by this before sampling.
  [[nodiscard]] const QTransform& textureMatrix() const { return m_textureMatrix; }
  /// Outside 0…1 the texture repeats; otherwise its edge pixels go on.
  [[nodiscard]] bool repeats() const { return m_repeats; }
  [[nodiscard]] Image withTexturing(const QTransform& matrix, bool repeats) const;

  friend bool operator==(const Image& a, const Image& b) {
    return a.m_source == b.m_source && a.m_repeats == b.m_repeats &&
           a.m_textureMatrix == b.m_textureMatrix;
  }

 private:
  std::shared_ptr<const ImageSource> m_source;
  QTransform m_textureMatrix;
  bool m_repeats = false;
};

}  // namespace runtime
