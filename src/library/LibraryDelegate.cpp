#include "library/LibraryDelegate.h"

#include <QPainter>

#include "library/LibraryModel.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace library {

using widgets::TextStyle;
using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr int margin = 12;
constexpr int gap = 9;
// Pictures stand on the same plate in both themes, as they would on air.
constexpr QColor plate(0x2c, 0x2e, 0x35);
constexpr QColor onPlate(0xa9, 0xac, 0xb7);
constexpr QColor brokenOnPlate(0xff, 0x7d, 0x93);

QString glyphOf(LibraryKind kind) {
  switch (kind) {
    case LibraryKind::Folder:
      return QStringLiteral("Folder");
    case LibraryKind::Image:
      return QStringLiteral("Image");
    case LibraryKind::Composition:
      return QStringLiteral("Document");
    case LibraryKind::Component:
      break;
  }
  return QStringLiteral("Component");
}

QString secondLine(const QModelIndex& index) {
  QStringList parts;
  for (const int column : {LibraryModel::Resolution, LibraryModel::SizeOfFile})
    if (const QString text = index.siblingAtColumn(column).data().toString(); !text.isEmpty())
      parts.append(text);
  // The thumbnail shows what it is; where there is none of its size, there is room to say it.
  if (parts.size() < 2) parts.prepend(index.siblingAtColumn(LibraryModel::Kind).data().toString());
  return parts.join(QStringLiteral("  ·  "));
}

}  // namespace

QSize LibraryDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
  return {QStyledItemDelegate::sizeHint(option, index).width(),
          m_folded ? foldedRowHeight : rowHeight};
}

void LibraryDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  painter->save();
  painter->setClipRect(option.rect);
  if (option.state & QStyle::State_Selected)
    painter->fillRect(option.rect, TYStyleKit::colour(Token::SelectionRow));
  if (index.column() == LibraryModel::Name) {
    paintName(*painter, option, index);
  } else {
    painter->setFont(TYStyleKit::font(TextStyle::Small));
    painter->setPen(TYStyleKit::colour(Token::Text2));
    const auto alignment = index.data(Qt::TextAlignmentRole).toInt();
    painter->drawText(option.rect.adjusted(4, 0, -8, 0),
                      alignment != 0 ? alignment : Qt::AlignLeft | Qt::AlignVCenter,
                      index.data().toString());
  }
  painter->restore();
}

void LibraryDelegate::paintName(QPainter& painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
  const QRect row = option.rect;
  const QRect box(row.left() + margin, row.center().y() - thumbnailSize.height() / 2,
                  thumbnailSize.width(), thumbnailSize.height());
  paintThumbnail(painter, box, index);
  QRect text(row);
  text.setLeft(box.right() + gap);
  text.setRight(row.right() - 4);
  const QFont font = TYStyleKit::font(TextStyle::Body);
  const auto draw = [&](const QRect& area, const QFont& face, Token colour, const QString& what) {
    painter.setFont(face);
    painter.setPen(TYStyleKit::colour(colour));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(face).elidedText(what, Qt::ElideRight, area.width()));
  };
  if (!m_folded) {
    draw(text, font, Token::Text, index.data().toString());
    return;
  }
  const int half = row.height() / 2;
  draw(QRect(text.left(), row.top() + 4, text.width(), half - 4), font, Token::Text,
       index.data().toString());
  draw(QRect(text.left(), row.top() + half, text.width(), half - 6),
       TYStyleKit::font(TextStyle::Small), Token::Text3, secondLine(index));
}

void LibraryDelegate::paintThumbnail(QPainter& painter, const QRect& box,
                                     const QModelIndex& index) const {
  const auto kind = static_cast<LibraryKind>(index.data(LibraryModel::KindRole).toInt());
  const auto picture = index.data(LibraryModel::ThumbnailRole).value<QImage>();
  const bool isBroken = !index.data(LibraryModel::ProblemRole).toString().isEmpty();
  if (kind != LibraryKind::Folder) painter.fillRect(box, plate);
  if (picture.isNull()) {
    widgets::TYGlyph::paint(painter, isBroken ? QStringLiteral("Broken") : glyphOf(kind),
                            QRectF(box.center().x() - 7.5, box.center().y() - 7.5, 16, 16),
                            kind == LibraryKind::Folder ? TYStyleKit::colour(Token::Text2)
                            : isBroken                  ? brokenOnPlate
                                                        : onPlate);
    return;
  }
  const QSizeF fitted = QSizeF(picture.size()).scaled(box.size(), Qt::KeepAspectRatio);
  QRectF target({0, 0}, fitted);
  target.moveCenter(QRectF(box).center());
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(target, picture);
}

}  // namespace library
