#pragma once

#include <QRectF>

class QColor;
class QPainter;

namespace widgets {

/// The frames that show how much of a picture every receiver shows, in lines of one device pixel.
class SafeAreas {
 public:
  /// For a picture that lies there, in logical pixels.
  explicit SafeAreas(const QRectF& picture) : m_picture(picture) {}

  /// Expanded to whole device pixels, then moved by half of one, so that lines along it fall on
  /// pixels' centres. Logical pixels at so many device pixels each.
  [[nodiscard]] static QRectF niceDrawingRectFromRect(const QRectF& rect, double devicePixelRatio);
  /// 96.5 % of the picture.
  [[nodiscard]] QRectF outer() const;
  /// 90 % of its width by 95 % of its height.
  [[nodiscard]] QRectF inner() const;

  void paint(QPainter& painter) const;

 private:
  [[nodiscard]] QRectF share(float left, float top, float width, float height) const;
  static void stroke(QPainter& painter, const QRectF& area, const QColor& color);

  QRectF m_picture;
};

}  // namespace widgets
