#include "preview/PreviewView.h"

#include <QEvent>
#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace preview {

using widgets::TYStyleKit;

namespace {
constexpr int closeZoom = 200;  // percent
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
  m_geometry.setPicture(size);
  m_painter.setPicture({});
  update();
  Q_EMIT scaleChanged();
}

void PreviewView::setPicture(std::shared_ptr<const Picture> picture) {
  const QRectF changed = m_painter.setPicture(std::move(picture));
  const QTransform toView =
      QTransform::fromTranslate(m_geometry.pictureRect().x(), m_geometry.pictureRect().y())
          .scale(m_geometry.scale(), m_geometry.scale());
  update(toView.mapRect(changed).toAlignedRect().adjusted(-2, -2, 2, 2));
}

void PreviewView::setOptions(const PictureOptions& options) {
  m_painter.setOptions(options);
  update();
}

void PreviewView::setBackdrop(const QImage& image) {
  if (image.isNull() && !hasBackdrop()) return;
  m_painter.setBackdrop(image);
  update();
}

void PreviewView::setZoom(int percent) {
  m_geometry.setZoom(percent);
  update();
  Q_EMIT scaleChanged();
}

void PreviewView::setZoom(int percent, const QPointF& about) {
  m_geometry.setZoom(percent, about);
  update();
  Q_EMIT scaleChanged();
}

void PreviewView::moveBy(const QPointF& distance) {
  if (m_geometry.moveBy(distance)) update();
}

void PreviewView::setFailure(const QString& title, const QString& text) {
  m_failureTitle = title;
  m_failureText = text;
  Q_EMIT scaleChanged();
  setAccessibleDescription(title.isEmpty() ? QString() : title + QStringLiteral(": ") + text);
  update();
}

void PreviewView::place() {
  m_geometry.setView(size(), devicePixelRatioF());
  Q_EMIT scaleChanged();
}

void PreviewView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  place();
}

bool PreviewView::event(QEvent* event) {
  // Another screen may have another density.
  if (event->type() == QEvent::ScreenChangeInternal) place();
  return QWidget::event(event);
}

void PreviewView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const widgets::DevicePixels pixels(painter);
  if (!m_failureTitle.isEmpty()) {
    // Texts are not legible on the surround of pictures in every theme.
    pixels.fill(rect(), TYStyleKit::colour(widgets::Token::Panel));
    return paintFailure(painter);
  }
  const QRectF area = pixels.snapped(m_geometry.pictureRect());
  if (!area.toAlignedRect().contains(rect()))
    pixels.fill(rect(), window()->isFullScreen()
                            ? QColor(Qt::black)
                            : TYStyleKit::colour(widgets::Token::CanvasSurround));
  // Who looks closely wants to see the pixels.
  const bool isClose = m_geometry.zoom() >= closeZoom;
  m_painter.paint(painter, area, !isClose);
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
