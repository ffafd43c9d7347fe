#pragma once

#include <QWidget>

#include "preview/PicturePool.h"

namespace preview {

/// Shows the picture that was finished last, as large as fits, and in its place what went wrong.
class PreviewView : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewView(QWidget* parent = nullptr);

  /// Pixels of the pictures that follow; what was shown before is gone.
  void setPictureSize(const QSize& size);
  void setPicture(std::shared_ptr<const Picture> picture);
  [[nodiscard]] const std::shared_ptr<const Picture>& picture() const { return m_picture; }
  /// Instead of a picture; empty texts show the picture again.
  void setFailure(const QString& title, const QString& text);
  [[nodiscard]] const QString& failureTitle() const { return m_failureTitle; }
  [[nodiscard]] const QString& failureText() const { return m_failureText; }
  /// Logical units of the widget for one pixel of the picture.
  [[nodiscard]] double scale() const;
  /// Where the picture is, in the widget.
  [[nodiscard]] QRectF pictureRect() const;

 Q_SIGNALS:
  void scaleChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void paintPicture(QPainter& painter) const;
  void paintFailure(QPainter& painter) const;

  QSize m_pictureSize{1920, 1080};
  std::shared_ptr<const Picture> m_picture;
  QRect m_drawn;  ///< pixels of the picture that are not transparent
  QString m_failureTitle;
  QString m_failureText;
};

}  // namespace preview
