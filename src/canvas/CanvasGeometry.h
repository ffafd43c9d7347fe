#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>

namespace canvas {

/// Where the picture lies in the view that shows it. Three spaces: the picture (its pixels, from
/// the lower left corner, y up), the core layer (the view's points from its lower left corner, y
/// up; "absolute") and the view (its points from the upper left corner, y down). A value; lengths
/// are logical pixels.
class CanvasGeometry {
 public:
  CanvasGeometry() = default;
  CanvasGeometry(const QSizeF& picture, const QSizeF& view, float zoomFactor)
      : m_picture(picture), m_view(view), m_zoom(zoomFactor) {}

  /// The factor of a zoom mode in percent. Mode 0 fits the picture into the content of the scroll
  /// view, with a ruler's thickness and a gap left free on every side; that can be 0 or less where
  /// there is no room.
  [[nodiscard]] static float zoomFactor(qint32 zoomMode, const QSizeF& content,
                                        const QSizeF& picture, const QSizeF& rulers);
  /// How large a view scrolls in that content: as large as the content, or the picture and a margin
  /// on an axis on which it does not fit inside.
  [[nodiscard]] static QSizeF documentViewSize(const QSizeF& content, const QSizeF& zoomedPicture);

  [[nodiscard]] const QSizeF& picture() const { return m_picture; }
  [[nodiscard]] const QSizeF& view() const { return m_view; }
  [[nodiscard]] float zoomFactor() const { return m_zoom; }
  [[nodiscard]] double zoomedDocumentWidth() const { return m_picture.width() * m_zoom; }
  [[nodiscard]] double zoomedDocumentHeight() const { return m_picture.height() * m_zoom; }
  /// False when nothing of the picture can be seen.
  [[nodiscard]] bool isValid() const { return m_zoom > 0 && !m_picture.isEmpty(); }
  /// The picture's area in the view.
  [[nodiscard]] QRectF pictureFrame() const;

  [[nodiscard]] QPointF viewPoint(const QPointF& picturePoint) const;
  [[nodiscard]] QRectF viewRect(const QRectF& pictureRect) const;
  [[nodiscard]] QPointF picturePoint(const QPointF& viewPoint) const;
  [[nodiscard]] QRectF pictureRect(const QRectF& viewRect) const;

  /// Where an unzoomed picture would lie, centred in the core layer.
  [[nodiscard]] QPointF drawingAreaOffset() const;
  [[nodiscard]] QPointF relativePointToAbsolutePointWithoutZoom(const QPointF& point) const {
    return point + drawingAreaOffset();
  }
  [[nodiscard]] QPointF relativePointToAbsolutePoint(const QPointF& point) const;
  [[nodiscard]] QPointF absolutePointToRelativePoint(const QPointF& point) const;
  [[nodiscard]] QRectF relativeFrameToAbsoluteZoomLevelFrame(const QRectF& frame) const;
  [[nodiscard]] QTransform zoomScaleTransformation() const {
    return QTransform::fromScale(m_zoom, m_zoom);
  }
  /// Of everything in the core layer: the scale about its middle.
  [[nodiscard]] QTransform zoomTransformation() const;

  friend bool operator==(const CanvasGeometry&, const CanvasGeometry&) = default;

 private:
  QSizeF m_picture;
  QSizeF m_view;
  float m_zoom = 1;
};

}  // namespace canvas
