#include "widgets/Chessboard.h"

#include <QImage>
#include <QPainter>

#include "widgets/TYStyleKit.h"

namespace widgets {

QBrush chessboardBrush(int square) {
  QImage tile(2 * square, 2 * square, QImage::Format_RGB32);
  tile.fill(TYStyleKit::colour(Token::Chess1));
  QPainter painter(&tile);
  const QColor second = TYStyleKit::colour(Token::Chess2);
  painter.fillRect(square, 0, square, square, second);
  painter.fillRect(0, square, square, square, second);
  painter.end();
  return QBrush(tile);
}

}  // namespace widgets
