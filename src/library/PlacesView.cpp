#include "library/PlacesView.h"

#include <QDir>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "library/LibraryEntry.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyleKit.h"

namespace library {

using widgets::TextStyle;
using widgets::Token;
using widgets::TYStyleKit;

namespace {

constexpr int placeHeight = 24;
constexpr int inset = 8;
constexpr int glyphSize = 16;
constexpr int gap = 8;
constexpr double radius = 4;
constexpr int CountRole = Qt::UserRole;
constexpr int GlyphRole = Qt::UserRole + 1;

int countIn(const QString& folder) {
  int count = 0;
  for (const QString& name :
       QDir(folder).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot))
    count += LibraryEntry::isListed(name) ? 1 : 0;
  return count;
}

class PlaceDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    painter->save();
    const QRect plate = option.rect.adjusted(inset, 0, -inset, 0);
    const bool isChosen = option.state.testFlag(QStyle::State_Selected);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    if (isChosen || option.state.testFlag(QStyle::State_MouseOver)) {
      painter->setBrush(TYStyleKit::colour(isChosen ? Token::ControlOn : Token::ControlHover));
      painter->drawRoundedRect(plate, radius, radius);
    }
    const QRect glyph(plate.left() + 4, plate.center().y() - glyphSize / 2 + 1, glyphSize,
                      glyphSize);
    widgets::TYGlyph::paint(*painter, index.data(GlyphRole).toString(), glyph,
                            TYStyleKit::colour(Token::Text2));
    painter->setFont(TYStyleKit::font(TextStyle::Small));
    painter->setPen(TYStyleKit::colour(isChosen ? Token::Text : Token::Text3));
    const QString count = index.data(CountRole).toString();
    painter->drawText(plate.adjusted(0, 0, -gap, 0), Qt::AlignRight | Qt::AlignVCenter, count);
    QRect text = plate;
    text.setLeft(glyph.right() + gap);
    text.setRight(plate.right() - 2 * gap - painter->fontMetrics().horizontalAdvance(count));
    painter->setFont(TYStyleKit::font(TextStyle::Body));
    painter->setPen(TYStyleKit::colour(Token::Text));
    painter->drawText(
        text, Qt::AlignLeft | Qt::AlignVCenter,
        painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideMiddle, text.width()));
    painter->restore();
  }
};

}  // namespace

PlacesView::PlacesView(QWidget* parent) : QListWidget(parent) {
  setAccessibleName(tr("Places"));
  setFrameShape(QFrame::NoFrame);
  setUniformItemSizes(true);
  setMouseTracking(true);
  setItemDelegate(new PlaceDelegate(this));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void PlacesView::setPlaces(const QList<Place>& places) {
  if (places == m_places) return refresh();
  const QSignalBlocker blocker(this);
  const int chosen = currentRow();
  clear();
  m_places = places;
  for (const Place& place : places) {
    auto* item = new QListWidgetItem(place.title, this);
    item->setSizeHint(QSize(0, placeHeight));
    item->setToolTip(QDir::toNativeSeparators(place.folder));
    item->setData(GlyphRole, place.glyph);
  }
  setCurrentRow(std::min(chosen, count() - 1));
  setFixedHeight(placeHeight * count() + 6);
  refresh();
}

bool PlacesView::contains(const QString& folder) const {
  return std::any_of(m_places.begin(), m_places.end(),
                     [&](const Place& place) { return place.folder == folder; });
}

void PlacesView::refresh() {
  for (int row = 0; row < count(); ++row) {
    const int files = countIn(m_places.at(row).folder);
    item(row)->setData(CountRole, QString::number(files));
    item(row)->setData(Qt::AccessibleTextRole,
                       tr("%1, %2 files").arg(m_places.at(row).title).arg(files));
  }
}

}  // namespace library
