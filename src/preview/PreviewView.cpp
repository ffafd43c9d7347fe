#include "preview/PreviewView.h"

#include <QPainter>

#include "widgets/Chessboard.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace preview {

using widgets::TYStyleKit;

namespace {
constexpr int chessSquare = 8;
constexpr int failureGlyph = 24;
constexpr int failureGap = 8;
constexpr int margin = 20;
}  // namespace

PreviewView::PreviewView(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAccessibleName(tr("Picture"));
  setMinimumSize(160, 90);
}

void PreviewView::setPictureSize(const QSize& size) {
  m_pictureSize = size;
  m_picture.reset();
  update();
  Q_EMIT scaleChanged();
}

void PreviewView::setPicture(std::shared_ptr<const Picture> picture) {
  // Outside of what either of them drew on, both are transparent.
  const QRect drawn = picture->canvas.touched();
  const bool isFirst = !m_picture;
  m_picture = std::move(picture);
  const QRect changed = std::exchange(m_drawn, drawn) | drawn;
  if (isFirst) return update();
  const QTransform toView =
      QTransform::fromTranslate(pictureRect().x(), pictureRect().y()).scale(scale(), scale());
  update(toView.mapRect(QRectF(changed)).toAlignedRect().adjusted(-2, -2, 2, 2));
}

void PreviewView::setFailure(const QString& title, const QString& text) {
  m_failureTitle = title;
  m_failureText = text;
  Q_EMIT scaleChanged();
  setAccessibleDescription(title.isEmpty() ? QString() : title + QStringLiteral(": ") + text);
  update();
}

double PreviewView::scale() const {
  if (m_pictureSize.isEmpty() || !m_failureTitle.isEmpty()) return 1;
  return std::min(static_cast<double>(width()) / m_pictureSize.width(),
                  static_cast<double>(height()) / m_pictureSize.height());
}

QRectF PreviewView::pictureRect() const {
  const QSizeF size = QSizeF(m_pictureSize) * scale();
  return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

void PreviewView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Q_EMIT scaleChanged();
}

void PreviewView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const widgets::DevicePixels pixels(painter);
  const QRectF area = pixels.snapped(pictureRect());
  if (!m_failureTitle.isEmpty()) {
    // Texts are not legible on the surround of pictures in every theme.
    pixels.fill(rect(), TYStyleKit::colour(widgets::Token::Panel));
    return paintFailure(painter);
  }
  if (area.toAlignedRect() != rect())
    pixels.fill(rect(), TYStyleKit::colour(widgets::Token::CanvasSurround));
  if (m_picture) {
    paintPicture(painter);
  } else {
    pixels.fill(area, Qt::black);
  }
}

void PreviewView::paintPicture(QPainter& painter) const {
  const QRectF area = widgets::DevicePixels(painter).snapped(pictureRect());
  const QImage& image = m_picture->image();
  const QSizeF devicePixels = area.size() * devicePixelRatioF();
  painter.setRenderHint(QPainter::SmoothPixmapTransform, devicePixels.toSize() != image.size());
  if (m_picture->isOpaque) {
    // Its alpha left out: then painting is copying.
    const QImage opaque(image.constBits(), image.width(), image.height(), image.bytesPerLine(),
                        QImage::Format_RGB32);
    painter.drawImage(area, opaque);
    return;
  }
  painter.fillRect(area, widgets::chessboardBrush(chessSquare));
  if (!m_drawn.isEmpty()) painter.drawImage(area, image);
}

void PreviewView::paintFailure(QPainter& painter) const {
  const QRectF area = rect().adjusted(margin, margin, -margin, -margin);
  painter.setFont(TYStyleKit::font(widgets::TextStyle::PanelTitle));
  const qreal titleHeight = painter.fontMetrics().height();
  const qreal top = area.center().y() - failureGlyph - titleHeight;
  const QColor broken = TYStyleKit::colour(widgets::Token::Broken);
  widgets::TYGlyph::paint(painter, QStringLiteral("Warning"),
                          {area.center().x() - failureGlyph / 2.0, top, failureGlyph, failureGlyph},
                          broken);
  painter.setPen(TYStyleKit::colour(widgets::Token::Text));
  const QRectF title(area.left(), top + failureGlyph + failureGap, area.width(), titleHeight);
  painter.drawText(title, Qt::AlignHCenter | Qt::AlignTop, m_failureTitle);
  painter.setFont(TYStyleKit::font(widgets::TextStyle::Body));
  painter.setPen(TYStyleKit::colour(widgets::Token::Text2));
  const QRectF text(area.left(), title.bottom() + failureGap, area.width(),
                    area.bottom() - title.bottom() - failureGap);
  painter.drawText(text, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_failureText);
}

}  // namespace preview
