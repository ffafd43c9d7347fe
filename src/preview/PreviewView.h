#pragma once

#include <QWidget>

#include "preview/PictureGeometry.h"
#include "preview/PicturePainter.h"

namespace preview {

/// Shows the picture that was finished last, as it was chosen to be looked at, and in its place
/// what went wrong.
class PreviewView : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewView(QWidget* parent = nullptr);

  /// Pixels of the pictures that follow; what was shown before is gone.
  void setPictureSize(const QSize& size);
  void setPicture(std::shared_ptr<const Picture> picture);
  [[nodiscard]] const std::shared_ptr<const Picture>& picture() const {
    return m_painter.picture();
  }
  void setOptions(const PictureOptions& options);
  /// What lies behind the graphic where the options say a still or a movie; null for nothing.
  void setBackdrop(const QImage& image);
  [[nodiscard]] bool hasBackdrop() const { return m_painter.hasBackdrop(); }
  [[nodiscard]] const PictureGeometry& geometry() const { return m_geometry; }
  /// Percent or PictureGeometry::fit, about the middle or a point of the view.
  void setZoom(int percent);
  void setZoom(int percent, const QPointF& about);
  void moveBy(const QPointF& distance);
  /// Instead of a picture; empty texts show the picture again.
  void setFailure(const QString& title, const QString& text);
  [[nodiscard]] const QString& failureTitle() const { return m_failureTitle; }
  [[nodiscard]] const QString& failureText() const { return m_failureText; }

 Q_SIGNALS:
  /// Also whether the picture is larger than the view, or whether there is one.
  void scaleChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void place();
  void paintFailure(QPainter& painter) const;

  PictureGeometry m_geometry;
  PicturePainter m_painter;
  QString m_failureTitle;
  QString m_failureText;
};

}  // namespace preview
