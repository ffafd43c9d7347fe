#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>

#include "widgets/ZoomSteps.h"

namespace preview {

/// Where a picture lies in a view: as large as fits, or at so many percent, where 100 is one pixel
/// of the picture for one of the screen. Lengths are the view's logical units, y goes down.
class PictureGeometry {
 public:
  static constexpr int fit = widgets::ZoomSteps::fit;

  void setView(const QSizeF& size, double devicePixelRatio);
  /// Pixels.
  void setPicture(const QSize& size) { m_picture = size; }
  /// Percent or fit. What is at the point stays there as far as the picture has something to show
  /// beyond the view's edges.
  void setZoom(int percent, const QPointF& about);
  void setZoom(int percent) { setZoom(percent, middle()); }
  /// Percent or fit.
  [[nodiscard]] int zoom() const { return m_zoom; }

  /// Logical units for one pixel of the picture.
  [[nodiscard]] double scale() const;
  /// Device pixels for one pixel of the picture.
  [[nodiscard]] double factor() const { return scale() * m_ratio; }
  [[nodiscard]] QRectF pictureRect() const;
  /// Whether a part of the picture is beyond the view's edges.
  [[nodiscard]] bool isLargerThanView() const;
  /// Moves the picture as far as there is something to be seen; false when it stayed.
  bool moveBy(const QPointF& distance);
  /// How large the picture comes out, at most as large as it is: device pixels.
  [[nodiscard]] QSize shownPixels() const;

 private:
  [[nodiscard]] QPointF middle() const { return {m_view.width() / 2, m_view.height() / 2}; }
  [[nodiscard]] QPointF allowed(const QPointF& corner) const;
  void keepCorner(const QPointF& corner);

  QSizeF m_view;
  double m_ratio = 1;
  QSize m_picture;
  int m_zoom = fit;
  QPointF m_centre{0.5, 0.5};  ///< what of the picture is in the view's middle, as a share of it
};

}  // namespace preview
