#include "preview/PicturePainter.h"

#include <QPainter>

#include "widgets/Chessboard.h"
#include "widgets/SafeAreas.h"

namespace preview {

using Backdrop = PictureOptions::Backdrop;
using Channel = PictureOptions::Channel;

namespace {

constexpr int chessSquare = 8;

/// The colours without the alpha, which is the same as over black; shares the pixels.
QImage withoutAlpha(const QImage& image) {
  return {image.constBits(), image.width(), image.height(), image.bytesPerLine(),
          QImage::Format_RGB32};
}

void drawOver(QPainter& painter, const QRectF& area, const QImage& image, bool isSmooth) {
  const QSizeF device = area.size() * painter.device()->devicePixelRatioF();
  painter.setRenderHint(QPainter::SmoothPixmapTransform,
                        isSmooth && device.toSize() != image.size());
  painter.drawImage(area, image);
}

/// The alpha of the area's pixels, as grey.
void convertToKey(const QImage& from, QImage& to, const QRect& area) {
  for (int y = area.top(); y <= area.bottom(); ++y) {
    const auto* source = reinterpret_cast<const QRgb*>(from.constScanLine(y)) + area.left();
    auto* target = reinterpret_cast<QRgb*>(to.scanLine(y)) + area.left();
    for (int x = 0; x < area.width(); ++x) target[x] = 0xff000000U | (source[x] >> 24) * 0x010101U;
  }
}

}  // namespace

void PicturePainter::setOptions(const PictureOptions& options) {
  m_awaiting.reset();
  // Until then its key would be white all over.
  if (m_picture && m_picture->isOpaque && !options.showsOwnBackground())
    m_awaiting = options;
  else
    apply(options);
}

void PicturePainter::apply(const PictureOptions& options) {
  const bool isKeyNew = options.channel != m_options.channel;
  m_options = options;
  if (!isKeyNew) return;
  m_key = {};
  if (m_picture) updateKey(m_drawn);
}

QRect PicturePainter::setPicture(std::shared_ptr<const Picture> picture) {
  // Outside of what either of them drew on, both are transparent.
  const QRect drawn = picture ? picture->canvas.touched() : QRect();
  const bool isOther = !m_picture || !picture || m_picture->isOpaque != picture->isOpaque;
  m_picture = std::move(picture);
  const QRect changed = std::exchange(m_drawn, drawn) | drawn;
  if (m_awaiting && !(m_picture && m_picture->isOpaque)) apply(*std::exchange(m_awaiting, {}));
  if (!m_picture) {
    m_key = {};
    return {};
  }
  updateKey(changed);
  return isOther ? m_picture->image().rect() : changed;
}

void PicturePainter::updateKey(const QRect& changed) {
  if (m_options.channel != Channel::Key) return;
  const QImage& image = m_picture->image();
  if (m_key.size() != image.size()) {
    m_key = QImage(image.size(), QImage::Format_RGB32);
    m_key.fill(Qt::black);
  }
  convertToKey(image, m_key, changed & image.rect());
}

void PicturePainter::paint(QPainter& painter, const QRectF& area, bool isSmooth) const {
  if (!m_picture) return painter.fillRect(area, Qt::black);
  const QImage& image = m_picture->image();
  if (m_options.channel == Channel::Key) {
    drawOver(painter, area, m_key, isSmooth);
  } else if (m_options.channel == Channel::Fill || m_picture->isOpaque) {
    drawOver(painter, area, withoutAlpha(image), isSmooth);
  } else {
    paintBackdrop(painter, area, isSmooth);
    if (!m_drawn.isEmpty()) drawOver(painter, area, image, isSmooth);
  }
  if (m_options.showsSafeAreas) widgets::SafeAreas(area).paint(painter);
}

void PicturePainter::paintBackdrop(QPainter& painter, const QRectF& area, bool isSmooth) const {
  switch (m_options.backdrop) {
    case Backdrop::Own:
    case Backdrop::Chessboard:
      // Moves with the picture.
      painter.setBrushOrigin(area.topLeft());
      return painter.fillRect(area, widgets::chessboardBrush(chessSquare));
    case Backdrop::Color:
      return painter.fillRect(area, m_options.color);
    case Backdrop::Still:
    case Backdrop::Movie:
      if (m_backdrop.isNull()) return painter.fillRect(area, Qt::black);
      return drawOver(painter, area, withoutAlpha(m_backdrop), isSmooth);
  }
}

QImage PicturePainter::channelOf(const Picture& picture, Channel channel) {
  const QImage& image = picture.image();
  if (channel == Channel::Key) {
    QImage key(image.size(), QImage::Format_RGB32);
    convertToKey(image, key, image.rect());
    return key;
  }
  if (channel == Channel::Fill || picture.isOpaque) return withoutAlpha(image).copy();
  return image.convertToFormat(QImage::Format_ARGB32);
}

}  // namespace preview
