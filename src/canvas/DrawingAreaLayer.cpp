#include "canvas/DrawingAreaLayer.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>

#include "canvas/ChessBoard.h"
#include "model/Composition.h"
#include "runtime/movie/MovieReader.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr QPointF shadowOffset(3, 3);
constexpr double shadowOpacity = 0.5;
constexpr int shadowRadius = 4;   // points that the shadow fades out over
constexpr int veilOpacity = 150;  // of 255

void paintShadow(QPainter& painter, const QRectF& frame) {
  // Rings of growing size, so that the opacity adds up towards the middle.
  QColor color(Qt::black);
  color.setAlphaF(static_cast<float>(shadowOpacity / (2 * shadowRadius)));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  for (int grown = shadowRadius; grown > -shadowRadius; --grown) {
    const QRectF ring = frame.translated(shadowOffset).adjusted(-grown, -grown, grown, grown);
    painter.drawRoundedRect(ring, shadowRadius, shadowRadius);
  }
  painter.restore();
}

/// Of the background movie, whose path may be relative to the document's; null without one.
QImage firstPicture(const model::Composition& composition) {
  const QString& movie = composition.backgroundMovie();
  if (movie.isEmpty()) return {};
  const QDir folder = QFileInfo(composition.fileURL().toLocalFile()).absoluteDir();
  const auto reader = runtime::movie::MovieReader::open(folder.absoluteFilePath(movie));
  if (!reader) return {};
  const auto picture = (*reader)->pictureAt(0);
  return picture ? picture->image : QImage();
}

}  // namespace

DrawingAreaLayer::DrawingAreaLayer(model::Composition& composition, std::function<void()> changed)
    : m_composition(composition), m_changed(std::move(changed)) {
  updateBackground();
  for (const char16_t* key :
       {u"backgroundMode", u"solidColorBackgroundMode", u"imageBackgroundMode", u"backgroundMovie"})
    m_observations.push_back(
        composition.observe(QString::fromUtf16(key), [this](const store::Change&) {
          updateBackground();
          m_changed();
        }));
}

void DrawingAreaLayer::updateBackground() {
  switch (m_composition.backgroundMode()) {
    case model::BackgroundMode::Image:
      m_contents = Contents::Image;
      m_image = firstPicture(m_composition);
      if (m_image.isNull()) m_image = m_composition.backgroundImage();
      if (m_image.isNull()) m_contents = Contents::ChessBoard;  // nothing will be there on air
      return;
    case model::BackgroundMode::SolidColor:
      m_contents = Contents::Color;
      m_image = {};
      m_color = m_composition.backgroundColor().toQColor();
      return;
    case model::BackgroundMode::None:
      m_contents = Contents::ChessBoard;
      m_image = {};
      return;
  }
}

QImage DrawingAreaLayer::chessBoardPattern(int width, int height) {
  return ChessBoard(width, height).image();
}

void DrawingAreaLayer::paint(QPainter& painter, const CanvasGeometry& geometry) const {
  painter.fillRect(QRectF(QPointF(), geometry.view()), TYStyleKit::colour(Token::CanvasSurround));
  if (!geometry.isValid()) return;
  const widgets::DevicePixels pixels(painter);
  const QRectF frame = pixels.snapped(geometry.pictureFrame());
  paintShadow(painter, frame);
  paintBackground(painter, frame);
  const double line = pixels.hairline();
  pixels.edge(frame.adjusted(-line, -line, line, line), QColor(128, 128, 128, 128));
}

void DrawingAreaLayer::paintBackground(QPainter& painter, const QRectF& frame) const {
  const QSize size = m_composition.size().toSize();
  if (m_contents == Contents::Color) {
    painter.fillRect(frame, m_color);
  } else if (m_contents == Contents::Image) {
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(frame, m_image);
    painter.restore();
  } else {
    ChessBoard(size.width(), size.height()).paint(painter, frame);
  }
}

void DrawingAreaLayer::paintVeil(QPainter& painter, const CanvasGeometry& geometry) {
  QColor veil = TYStyleKit::colour(Token::CanvasSurround);
  veil.setAlpha(veilOpacity);
  const QRectF all(QPointF(), geometry.view());
  const QRectF frame = widgets::DevicePixels(painter).snapped(geometry.pictureFrame());
  painter.fillRect(QRectF(0, 0, all.width(), frame.top()), veil);
  painter.fillRect(QRectF(0, frame.bottom(), all.width(), all.bottom() - frame.bottom()), veil);
  painter.fillRect(QRectF(0, frame.top(), frame.left(), frame.height()), veil);
  painter.fillRect(QRectF(frame.right(), frame.top(), all.right() - frame.right(), frame.height()),
                   veil);
}

}  // namespace canvas
