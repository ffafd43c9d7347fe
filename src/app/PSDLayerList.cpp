#include "app/PSDLayerList.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "document/psd/PSDLayer.h"
#include "document/psd/PSDLayerImporter.h"
#include "widgets/Chessboard.h"
#include "widgets/TYStyleKit.h"

namespace app {

using widgets::TextStyle;
using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr int rowHeight = 27;
constexpr int mostRows = 8;
constexpr int tickWidth = 30;
constexpr QSize thumbnail(28, 18);
constexpr int sizeWidth = 90;
constexpr int padding = 8;
constexpr int SizeRole = Qt::UserRole;
constexpr int PictureRole = Qt::UserRole + 1;

/// The layer in the middle of a small chessboard.
QPixmap thumbnailOf(const QImage& image, double ratio) {
  QPixmap box(thumbnail * ratio);
  box.setDevicePixelRatio(ratio);
  QPainter painter(&box);
  const QRectF all({0, 0}, thumbnail);
  painter.fillRect(all, widgets::chessboardBrush(4));
  if (image.isNull()) return box;
  const QImage small =
      image.scaled(thumbnail * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  QRectF target({0, 0}, QSizeF(small.size()) / ratio);
  target.moveCenter(all.center());
  painter.drawImage(target, small);
  return box;
}

class LayerDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    // Tick, selection and focus as lists draw them; name and size in columns of their own.
    QStyleOptionViewItem plain = option;
    plain.rect.setWidth(tickWidth);
    QStyledItemDelegate::paint(painter, plain, index);
    const QRect row = option.rect;
    const auto picture = index.data(PictureRole).value<QPixmap>();
    const QPoint corner(row.left() + tickWidth, row.center().y() - thumbnail.height() / 2 + 1);
    painter->drawPixmap(corner, picture);
    const bool isTicked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    painter->setFont(TYStyleKit::font(TextStyle::Body));
    painter->setPen(TYStyleKit::colour(isTicked ? Token::Text : Token::Text3));
    const QRect name =
        row.adjusted(tickWidth + thumbnail.width() + padding, 0, -sizeWidth - padding, 0);
    painter->drawText(
        name, Qt::AlignLeft | Qt::AlignVCenter,
        painter->fontMetrics().elidedText(index.data(Qt::AccessibleTextRole).toString(),
                                          Qt::ElideRight, name.width()));
    painter->setPen(TYStyleKit::colour(Token::Text3));
    painter->drawText(row.adjusted(0, 0, -padding, 0), Qt::AlignRight | Qt::AlignVCenter,
                      index.data(SizeRole).toString());
  }
};

}  // namespace

PSDLayerList::PSDLayerList(document::PSDLayerImporter& importer, QWidget* parent)
    : QListWidget(parent), m_importer(importer) {
  setAccessibleName(tr("Layers"));
  setItemDelegate(new LayerDelegate(this));
  setUniformItemSizes(true);
  for (const auto& layer : importer.layers()) {
    auto* item = new QListWidgetItem(this);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
    item->setCheckState(layer->visible() ? Qt::Checked : Qt::Unchecked);
    item->setData(Qt::AccessibleTextRole, layer->name());
    item->setData(
        SizeRole,
        QStringLiteral("%1 × %2").arg(layer->image().width()).arg(layer->image().height()));
    item->setData(PictureRole, thumbnailOf(layer->image(), devicePixelRatioF()));
    item->setToolTip(layer->name());
    item->setSizeHint(QSize(0, rowHeight));
  }
  setFixedHeight(std::min(count(), mostRows) * rowHeight + 2 * frameWidth() + 2);
  connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
    m_importer.layers()[static_cast<size_t>(row(item))]->setVisible(item->checkState() ==
                                                                    Qt::Checked);
    Q_EMIT ticksChanged();
  });
}

int PSDLayerList::tickedCount() const {
  int ticked = 0;
  for (int row = 0; row < count(); ++row) ticked += item(row)->checkState() == Qt::Checked ? 1 : 0;
  return ticked;
}

void PSDLayerList::tickAll(bool ticked) {
  for (int row = 0; row < count(); ++row)
    item(row)->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
}

}  // namespace app
