#include "canvas/ChessBoard.h"

#include <QPainter>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"

namespace canvas {

using widgets::Token;
using widgets::TYStyleKit;

void ChessBoard::forEachSquare(const std::function<void(const QRectF&)>& visit) const {
  const int rows = m_width / 64;
  if (rows < 1) return;
  const double side = static_cast<double>(static_cast<float>(m_height) / static_cast<float>(rows));
  if (!(side > 0)) return;
  const auto column = [&](double x, int parity) {
    for (int row = parity; row < rows; row += 2) visit(QRectF(x, row * side, side, side));
  };
  const double middle = m_width >> 1;
  int parity = 0;
  for (double x = middle; x < m_width; x += side, parity ^= 1) column(x, parity);
  parity = 0;
  for (double x = middle; x > -side; x -= side, parity ^= 1) column(x, parity);
}

void ChessBoard::paint(QPainter& painter, const QRectF& area) const {
  const widgets::DevicePixels pixels(painter);
  painter.save();
  painter.setClipRect(pixels.snapped(area), Qt::IntersectClip);
  pixels.fill(area, TYStyleKit::colour(Token::Chess1));
  const QColor second = TYStyleKit::colour(Token::Chess2);
  const double across = area.width() / m_width;
  const double down = area.height() / m_height;
  forEachSquare([&](const QRectF& square) {
    pixels.fill(QRectF(area.left() + square.left() * across, area.bottom() - square.bottom() * down,
                       square.width() * across, square.height() * down),
                second);
  });
  painter.restore();
}

QImage ChessBoard::image() const {
  QImage image(m_width, m_height, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return image;
  QPainter painter(&image);
  paint(painter, QRectF(image.rect()));
  return image;
}

}  // namespace canvas
