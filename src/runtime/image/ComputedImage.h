#pragma once

#include <functional>
#include <mutex>
#include <vector>

#include "runtime/Image.h"

namespace runtime::image {

/// An image whose pixels are computed from other images, or from nothing, when they are asked for.
/// Small images are computed once as a whole, after which their inputs are let go; of large and
/// infinite ones the areas last asked for are kept.
class ComputedImage : public ImageSource {
 public:
  /// Gives the premultiplied pixels of a non-empty area inside the extent; may be called from
  /// several threads.
  using Render = std::function<QImage(const QRect& area)>;

  /// Null for an empty extent. The extent is cut to `largestSide` pixels on each side.
  [[nodiscard]] static Image finite(const QRect& extent, const std::vector<Image>& inputs,
                                    Render render);
  /// Null when its inputs form a graph so deep that computing it could take for ever.
  [[nodiscard]] static Image infinite(const std::vector<Image>& inputs, Render render);
  /// Covers what the other covers.
  [[nodiscard]] static Image like(const Image& other, const std::vector<Image>& inputs,
                                  Render render);

  static constexpr int largestSide = 32768;

  [[nodiscard]] QRect extent() const override { return m_extent; }
  [[nodiscard]] bool isInfinite() const override { return m_infinite; }
  [[nodiscard]] QImage pixels(const QRect& area) const override;
  /// Null for more than 64 million pixels.
  [[nodiscard]] const QImage& bitmap() const override;

 private:
  ComputedImage(const QRect& extent, bool infinite, const std::vector<Image>& inputs,
                Render render);
  static Image made(std::unique_ptr<ComputedImage> source);
  [[nodiscard]] bool keepsBitmap() const;
  [[nodiscard]] QImage render(const QRect& area) const;

  QRect m_extent;
  bool m_infinite;
  bool m_hasInputs;
  int m_depth = 1;    // images below this one that are not known to be computed
  qint64 m_work = 1;  // evaluations of sources that one request can cause
  mutable Render m_render;
  mutable std::once_flag m_once;
  mutable QImage m_whole;
  mutable std::mutex m_mutex;
  mutable std::vector<std::pair<QRect, QImage>> m_recent;
};

/// Smallest rectangle of whole pixels around the (image space) rectangle; safe for any numbers.
[[nodiscard]] QRect pixelRect(const QRectF& rect);
/// The rectangle with `margin` more pixels on every side.
[[nodiscard]] inline QRect grown(const QRect& rect, int margin) {
  return rect.adjusted(-margin, -margin, margin, margin);
}
/// The part of the image inside the rectangle, in its place.
[[nodiscard]] Image cropped(const Image& image, const QRect& rect);

}  // namespace runtime::image
