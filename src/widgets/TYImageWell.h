#pragma once

#include <QAbstractButton>
#include <QImage>

namespace widgets {

/// Shows a picture and takes another: by dropping a file or an image on it, by clicking (the owner
/// then asks for a file); Delete takes it away.
class TYImageWell : public QAbstractButton {
  Q_OBJECT
 public:
  explicit TYImageWell(QWidget* parent = nullptr);

  /// A null image is an empty well.
  void setImage(const QImage& image);
  [[nodiscard]] const QImage& image() const { return m_image; }
  [[nodiscard]] QSize sizeHint() const override { return {104, 60}; }

 Q_SIGNALS:
  void fileDropped(const QString& path);
  void imageDropped(const QImage& image);
  void cleared();

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void clearByUser();

  QImage m_image;
  bool m_isTarget = false;
};

}  // namespace widgets
