#pragma once

#include <optional>

#include "preview/PictureOptions.h"
#include "preview/PicturePool.h"

class QPainter;

namespace preview {

/// Paints pictures with what is behind and over them. A picture that stands for all its pixels is
/// copied; of the others only what was drawn on is converted.
class PicturePainter {
 public:
  /// What needs a picture without background waits for one.
  void setOptions(const PictureOptions& options);
  /// Of a still or a movie: covers the whole picture.
  void setBackdrop(const QImage& image) { m_backdrop = image; }
  [[nodiscard]] bool hasBackdrop() const { return !m_backdrop.isNull(); }
  /// The picture to paint from now on; none for black. Returns the pixels that look different.
  QRect setPicture(std::shared_ptr<const Picture> picture);
  [[nodiscard]] const std::shared_ptr<const Picture>& picture() const { return m_picture; }
  /// Over the area, in logical units of the painter, smoothed or as squares where it has another
  /// size.
  void paint(QPainter& painter, const QRectF& area, bool isSmooth) const;

  /// The picture's alpha as grey, its colours alone over black, or all of it, for a file.
  [[nodiscard]] static QImage channelOf(const Picture& picture, PictureOptions::Channel channel);

 private:
  void paintBackdrop(QPainter& painter, const QRectF& area, bool isSmooth) const;
  void updateKey(const QRect& changed);
  void apply(const PictureOptions& options);

  PictureOptions m_options;
  std::optional<PictureOptions> m_awaiting;  ///< options that no picture serves yet
  QImage m_backdrop;
  std::shared_ptr<const Picture> m_picture;
  QRect m_drawn;  ///< pixels of the picture that are not transparent
  QImage m_key;   ///< while it is shown
};

}  // namespace preview
