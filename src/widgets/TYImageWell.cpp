#include "widgets/TYImageWell.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>

#include "widgets/Chessboard.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"

namespace widgets {
namespace {

QString droppedFile(const QMimeData* data) {
  const QList<QUrl> urls = data->urls();
  return urls.size() == 1 && urls.constFirst().isLocalFile() ? urls.constFirst().toLocalFile()
                                                             : QString();
}

// As large as possible without covering less than the whole picture, like the well's frame.
QRectF fitted(const QSize& picture, const QRectF& into) {
  const QSizeF size = QSizeF(picture).scaled(into.size(), Qt::KeepAspectRatio);
  QRectF rect(QPointF(), size);
  rect.moveCenter(into.center());
  return rect;
}

}  // namespace

TYImageWell::TYImageWell(QWidget* parent) : QAbstractButton(parent) {
  setAcceptDrops(true);
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::TabFocus);
  setFixedSize(sizeHint());
  setAccessibleName(tr("Picture"));
}

void TYImageWell::setImage(const QImage& image) {
  m_image = image;
  setAccessibleDescription(image.isNull() ? tr("Empty") : QString());
  update();
}

void TYImageWell::dragEnterEvent(QDragEnterEvent* event) {
  if (droppedFile(event->mimeData()).isEmpty() && !event->mimeData()->hasImage()) return;
  event->acceptProposedAction();
  m_isTarget = true;
  update();
}

void TYImageWell::dragLeaveEvent(QDragLeaveEvent*) {
  m_isTarget = false;
  update();
}

void TYImageWell::dropEvent(QDropEvent* event) {
  m_isTarget = false;
  update();
  event->acceptProposedAction();
  const QString file = droppedFile(event->mimeData());
  if (!file.isEmpty()) {
    Q_EMIT fileDropped(file);
  } else {
    Q_EMIT imageDropped(event->mimeData()->imageData().value<QImage>());
  }
}

void TYImageWell::keyPressEvent(QKeyEvent* event) {
  const bool deletes = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
  if (deletes && !m_image.isNull()) {
    clearByUser();
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

void TYImageWell::clearByUser() {
  setImage({});
  Q_EMIT cleared();
}

void TYImageWell::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyle::State state = isEnabled() ? QStyle::State_Enabled : QStyle::State_None;
  if (underMouse()) state |= QStyle::State_MouseOver;
  drawField(rect(), state, false, painter);
  const QRectF inside = QRectF(rect()).adjusted(4, 4, -4, -4);
  if (m_image.isNull()) {
    QRectF glyph(0, 0, 16, 16);
    glyph.moveCenter(inside.center());
    TYGlyph::paint(painter, QStringLiteral("Image"), glyph,
                   TYStyleKit::colour(isEnabled() ? Token::Text3 : Token::TextDisabled));
  } else {
    const QRectF picture = fitted(m_image.size(), inside);
    QPainterPath corners;
    corners.addRoundedRect(picture, 2, 2);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setClipPath(corners);
    if (m_image.hasAlphaChannel()) painter.fillRect(picture, chessboardBrush(4));
    painter.drawImage(picture, m_image);
    painter.setClipping(false);
  }
  if (m_isTarget) {
    const DevicePixels pixels(painter);
    pixels.fill(rect(), TYStyleKit::colour(Token::DropTarget), kControlRadius);
    pixels.edge(rect(), TYStyleKit::colour(Token::Accent), kControlRadius, 2 / pixels.hairline());
  }
}

}  // namespace widgets
