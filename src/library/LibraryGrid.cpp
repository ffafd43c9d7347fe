#include "library/LibraryGrid.h"

#include <QPainter>

#include "library/LibraryDelegate.h"
#include "widgets/TYStyleKit.h"

namespace library {

using widgets::TextStyle;
using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr QSize picture(112, 63);
constexpr int padding = 6;
constexpr int nameHeight = 18;
constexpr double radius = 6;
constexpr QSize tile(picture.width() + 2 * padding, picture.height() + 3 * padding + nameHeight);

class TileDelegate : public LibraryDelegate {
 public:
  using LibraryDelegate::LibraryDelegate;

  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return tile;
  }
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool isChosen = option.state.testFlag(QStyle::State_Selected);
    if (isChosen || option.state.testFlag(QStyle::State_MouseOver)) {
      painter->setPen(Qt::NoPen);
      painter->setBrush(TYStyleKit::colour(isChosen ? Token::SelectionRow : Token::ControlHover));
      painter->drawRoundedRect(option.rect, radius, radius);
    }
    const QRect box(option.rect.topLeft() + QPoint(padding, padding), picture);
    paintThumbnail(*painter, box, index);
    const QRect name(box.left(), box.bottom() + padding, box.width(), nameHeight);
    painter->setFont(TYStyleKit::font(TextStyle::Small));
    painter->setPen(TYStyleKit::colour(Token::Text));
    painter->drawText(
        name, Qt::AlignCenter,
        painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideMiddle, name.width()));
    painter->restore();
  }
};

}  // namespace

LibraryGrid::LibraryGrid(QWidget* parent) : QListView(parent) {
  setAccessibleName(tr("Files"));
  setItemDelegate(new TileDelegate(this));
  setViewMode(IconMode);
  setMovement(Static);
  setResizeMode(Adjust);
  setUniformItemSizes(true);
  setSpacing(4);
  setMouseTracking(true);
  setFrameShape(QFrame::NoFrame);
  setSelectionMode(ExtendedSelection);
  setDragEnabled(true);
  setDragDropMode(DragOnly);
  setDefaultDropAction(Qt::CopyAction);
  setContextMenuPolicy(Qt::CustomContextMenu);
}

}  // namespace library
