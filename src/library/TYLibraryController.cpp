#include "library/TYLibraryController.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeView>
#include <QUrl>
#include <QVBoxLayout>

#include "library/LibraryDelegate.h"
#include "widgets/TYEmptyPanel.h"
#include "widgets/TYPaneHeader.h"
#include "widgets/TYSearchField.h"
#include "widgets/TokenLabel.h"

namespace library {

using widgets::TYStyleKit;

namespace {

constexpr int margin = 12;
constexpr int placeHeight = 24;
constexpr int foldBelow = 300;
const QString pathKey = QStringLiteral("imagesLibraryPath");

int countIn(const QString& folder) {
  int count = 0;
  for (const QString& name :
       QDir(folder).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot))
    count += LibraryEntry::isListed(name) ? 1 : 0;
  return count;
}

}  // namespace

TYLibraryController::TYLibraryController(foundation::UserDefaults& defaults,
                                         const QList<Place>& fixedPlaces, QWidget* parent)
    : QWidget(parent),
      m_defaults(defaults),
      m_model(LibraryDelegate::thumbnailSize * 2),
      m_delegate(new LibraryDelegate(this)) {
  setAccessibleName(tr("Library"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* search = new widgets::TYSearchField;
  search->setPlaceholderText(tr("Search"));
  search->setAccessibleName(tr("Search the library"));
  auto* top = new QVBoxLayout;
  top->setContentsMargins(margin, 8, margin, 8);
  top->addWidget(search);
  column->addLayout(top);
  m_places = new QListWidget;
  m_places->setAccessibleName(tr("Places"));
  m_places->setFrameShape(QFrame::NoFrame);
  m_places->setUniformItemSizes(true);
  m_places->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_places->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  column->addWidget(m_places);
  auto* path = new QHBoxLayout;
  path->setContentsMargins(margin, 4, margin, 4);
  auto* up = new QToolButton;
  up->setText(tr("‹ Back"));
  up->setAutoRaise(true);
  m_folderName = new widgets::TokenLabel({}, widgets::TextStyle::Small, widgets::Token::Text2);
  path->addWidget(up);
  path->addWidget(m_folderName, 1);
  m_up = new QWidget;
  m_up->setLayout(path);
  m_up->hide();
  column->addWidget(m_up);
  connect(up, &QToolButton::clicked, this, &TYLibraryController::goUp);

  m_sorted.setSourceModel(&m_model);
  m_sorted.setSortRole(LibraryModel::SortRole);
  m_sorted.setSortCaseSensitivity(Qt::CaseInsensitive);
  m_sorted.setFilterCaseSensitivity(Qt::CaseInsensitive);
  m_sorted.setFilterKeyColumn(LibraryModel::Name);
  m_list = new QTreeView;
  m_list->setAccessibleName(tr("Files"));
  m_list->setModel(&m_sorted);
  m_list->setItemDelegate(m_delegate);
  m_list->setRootIsDecorated(false);
  m_list->setUniformRowHeights(true);
  m_list->setFrameShape(QFrame::NoFrame);
  m_list->setSortingEnabled(true);
  m_list->sortByColumn(LibraryModel::Name, Qt::AscendingOrder);
  m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_list->setDragEnabled(true);
  m_list->setDragDropMode(QAbstractItemView::DragOnly);
  m_list->setDefaultDropAction(Qt::CopyAction);
  m_list->setContextMenuPolicy(Qt::CustomContextMenu);
  m_list->header()->setStretchLastSection(false);
  m_list->header()->setSectionResizeMode(LibraryModel::Name, QHeaderView::Stretch);
  for (const int hidden : {LibraryModel::DateCreated, LibraryModel::DateAdded,
                           LibraryModel::LastOpened, LibraryModel::Tags})
    m_list->setColumnHidden(hidden, true);
  m_list->setColumnWidth(LibraryModel::Resolution, 84);
  m_list->setColumnWidth(LibraryModel::SizeOfFile, 58);
  m_list->setColumnWidth(LibraryModel::DateModified, 68);
  m_list->setColumnWidth(LibraryModel::Kind, 86);
  m_stack = new QStackedWidget;
  m_stack->addWidget(m_list);
  auto* empty = new widgets::TYEmptyPanel(QStringLiteral("Folder"), tr("Nothing to use here"),
                                          tr("Choose the folder where your graphics are kept."));
  empty->setButton(tr("Choose Folder…"));
  m_stack->addWidget(empty);
  column->addWidget(m_stack, 1);

  connect(empty, &widgets::TYEmptyPanel::buttonClicked, this, [this] {
    const QString chosen =
        QFileDialog::getExistingDirectory(this, tr("Library Folder"), paths().first());
    if (chosen.isEmpty()) return;
    m_defaults.setValue(chosen, pathKey);
    refresh();
    choosePlace(m_places->count() - 1);
  });
  connect(search, &QLineEdit::textChanged, &m_sorted, &QSortFilterProxyModel::setFilterFixedString);
  connect(m_list, &QTreeView::doubleClicked, this, &TYLibraryController::activate);
  connect(m_list, &QWidget::customContextMenuRequested, this, &TYLibraryController::showMenu);
  connect(&m_sorted, &QAbstractItemModel::modelReset, this, &TYLibraryController::showEmptiness);
  connect(&m_sorted, &QAbstractItemModel::layoutChanged, this, &TYLibraryController::showEmptiness);
  connect(m_places, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0 && row < m_folders.size()) setFolder(m_folders.at(row));
  });
  addPlaces(fixedPlaces);
  choosePlace(0);
}

TYLibraryController::~TYLibraryController() = default;

QStringList TYLibraryController::paths() const {
  return {m_defaults.value(pathKey).toString()};
}

void TYLibraryController::addPlaces(const QList<Place>& fixedPlaces) {
  QList<Place> places = fixedPlaces;
  const QString own = paths().first();
  places.append({QFileInfo(own).fileName(), QStringLiteral("Folder"), own});
  for (const Place& place : std::as_const(places)) {
    auto* item = new QListWidgetItem(
        TYStyleKit::image(place.glyph),
        QStringLiteral("%1  (%2)").arg(place.title).arg(countIn(place.folder)), m_places);
    item->setSizeHint(QSize(0, placeHeight));
    item->setToolTip(QDir::toNativeSeparators(place.folder));
    m_folders.append(place.folder);
  }
  m_places->setFixedHeight(placeHeight * static_cast<int>(places.size()) + 6);
}

void TYLibraryController::choosePlace(int index) {
  m_places->setCurrentRow(index);
}

void TYLibraryController::refresh() {
  const QString own = paths().first();
  if (m_folders.last() == own) return;
  m_folders.last() = own;
  QListWidgetItem* item = m_places->item(m_places->count() - 1);
  item->setText(QStringLiteral("%1  (%2)").arg(QFileInfo(own).fileName()).arg(countIn(own)));
  item->setToolTip(QDir::toNativeSeparators(own));
  if (m_places->currentRow() == m_places->count() - 1) setFolder(own);
}

void TYLibraryController::setFolder(const QString& folder) {
  m_model.setFolder(folder);
  const bool isPlace = m_folders.contains(folder);
  m_up->setVisible(!isPlace);
  m_folderName->setText(QFileInfo(folder).fileName());
  showEmptiness();
}

void TYLibraryController::goUp() {
  setFolder(QFileInfo(m_model.folder()).path());
}

void TYLibraryController::showEmptiness() {
  const bool isOwn = m_places->currentRow() == m_places->count() - 1;
  m_stack->setCurrentIndex(m_model.rowCount() == 0 && isOwn ? 1 : 0);
}

QString TYLibraryController::pathAt(const QModelIndex& index) const {
  return index.siblingAtColumn(LibraryModel::Name).data(LibraryModel::PathRole).toString();
}

void TYLibraryController::activate(const QModelIndex& index) {
  const QModelIndexList rows = m_list->selectionModel()->selectedRows();
  for (const QModelIndex& row : rows.isEmpty() ? QModelIndexList{index} : rows) {
    const QString path = pathAt(row);
    switch (static_cast<LibraryKind>(row.data(LibraryModel::KindRole).toInt())) {
      case LibraryKind::Composition:
        Q_EMIT openRequested(path);
        break;
      case LibraryKind::Folder:
        setFolder(path);
        return;
      case LibraryKind::Component:
      case LibraryKind::Image:
        break;  // they are dragged to where they belong
    }
  }
}

void TYLibraryController::showMenu(const QPoint& position) {
  const QModelIndex index = m_list->indexAt(position);
  if (!index.isValid()) return;
  const QString path = pathAt(index);
  QMenu menu(this);
  const auto kind = static_cast<LibraryKind>(index.data(LibraryModel::KindRole).toInt());
  if (kind == LibraryKind::Component || kind == LibraryKind::Image)
    connect(menu.addAction(tr("Add to Graphic")), &QAction::triggered, this,
            [this, path] { Q_EMIT addRequested(path); });
  connect(menu.addAction(tr("Reveal in File Manager")), &QAction::triggered, this,
          [path] { QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).path())); });
  connect(menu.addAction(tr("Open")), &QAction::triggered, this, [this, path, kind] {
    if (kind == LibraryKind::Composition)
      Q_EMIT openRequested(path);
    else
      QDesktopServices::openUrl(QUrl::fromLocalFile(path));
  });
  menu.exec(m_list->viewport()->mapToGlobal(position));
}

void TYLibraryController::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fold();
}

void TYLibraryController::fold() {
  const bool folded = width() < foldBelow;
  m_delegate->setFolded(folded);
  for (const int column : {LibraryModel::Resolution, LibraryModel::SizeOfFile,
                           LibraryModel::DateModified, LibraryModel::Kind})
    m_list->setColumnHidden(column, folded);
  m_list->header()->setHidden(folded);
  m_list->doItemsLayout();
}

}  // namespace library
