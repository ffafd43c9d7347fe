#include "library/TYLibraryController.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QStackedWidget>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include "library/LibraryGrid.h"
#include "library/LibraryList.h"
#include "widgets/TYEmptyPanel.h"
#include "widgets/TYSearchField.h"
#include "widgets/TokenLabel.h"

namespace library {

namespace {

constexpr int margin = 12;
constexpr QSize thumbnailPixels(192, 108);  ///< sharp as tiles, too
const QString pathKey = QStringLiteral("imagesLibraryPath");
const QString gridKey = QStringLiteral("libraryShowsGrid");

}  // namespace

TYLibraryController::TYLibraryController(foundation::UserDefaults& defaults,
                                         QList<Place> fixedPlaces, QWidget* parent)
    : QWidget(parent),
      m_defaults(defaults),
      m_fixedPlaces(std::move(fixedPlaces)),
      m_model(thumbnailPixels),
      m_places(new PlacesView) {
  setAccessibleName(tr("Library"));
  m_sorted.setSourceModel(&m_model);
  m_sorted.setSortRole(LibraryModel::SortRole);
  m_sorted.setSortCaseSensitivity(Qt::CaseInsensitive);
  m_sorted.setFilterCaseSensitivity(Qt::CaseInsensitive);
  m_sorted.setFilterKeyColumn(LibraryModel::Name);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  addSearch(*column);
  column->addWidget(m_places);
  addWayUp(*column);
  addFiles(*column);
  keepSelection();
  connect(m_places, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0) setFolder(m_places->places().at(row).folder);
  });
  m_places->setPlaces(allPlaces());
  choosePlace(0);
}

TYLibraryController::~TYLibraryController() = default;

void TYLibraryController::addSearch(QVBoxLayout& column) {
  auto* search = new widgets::TYSearchField;
  search->setPlaceholderText(tr("Search"));
  search->setAccessibleName(tr("Search the library"));
  connect(search, &QLineEdit::textChanged, &m_sorted, &QSortFilterProxyModel::setFilterFixedString);
  auto* top = new QVBoxLayout;
  top->setContentsMargins(margin, 8, margin, 8);
  top->addWidget(search);
  column.addLayout(top);
}

void TYLibraryController::addWayUp(QVBoxLayout& column) {
  m_up = new QWidget;
  auto* path = new QHBoxLayout(m_up);
  path->setContentsMargins(margin, 4, margin, 4);
  auto* up = new QToolButton;
  up->setText(tr("‹ Back"));
  up->setAutoRaise(true);
  connect(up, &QToolButton::clicked, this,
          [this] { setFolder(QFileInfo(m_model.folder()).path()); });
  m_folderName = new widgets::TokenLabel({}, widgets::TextStyle::Small, widgets::Token::Text2);
  path->addWidget(up);
  path->addWidget(m_folderName, 1);
  m_up->hide();
  column.addWidget(m_up);
}

void TYLibraryController::addFiles(QVBoxLayout& column) {
  m_list = new LibraryList(m_defaults);
  m_list->setModel(&m_sorted);
  m_grid = new LibraryGrid;
  m_grid->setModel(&m_sorted);
  m_grid->setSelectionModel(m_list->selectionModel());
  m_empty = emptyPanel();
  m_stack = new QStackedWidget;
  for (QWidget* page : {static_cast<QWidget*>(m_list), static_cast<QWidget*>(m_grid), m_empty})
    m_stack->addWidget(page);
  column.addWidget(m_stack, 1);
  for (QAbstractItemView* view :
       {static_cast<QAbstractItemView*>(m_list), static_cast<QAbstractItemView*>(m_grid)}) {
    connect(view, &QAbstractItemView::doubleClicked, this, &TYLibraryController::activate);
    connect(view, &QWidget::customContextMenuRequested, this, &TYLibraryController::showMenu);
  }
  connect(&m_sorted, &QAbstractItemModel::modelReset, this, &TYLibraryController::showContent);
}

QWidget* TYLibraryController::emptyPanel() {
  auto* empty = new widgets::TYEmptyPanel(QStringLiteral("Folder"), tr("Nothing to use here"),
                                          tr("Choose the folder where your graphics are kept."));
  empty->setButton(tr("Choose Folder…"));
  connect(empty, &widgets::TYEmptyPanel::buttonClicked, this, &TYLibraryController::chooseFolder);
  return empty;
}

void TYLibraryController::chooseFolder() {
  const QString chosen =
      QFileDialog::getExistingDirectory(this, tr("Library Folder"), paths().first());
  if (chosen.isEmpty()) return;
  m_defaults.setValue(chosen, pathKey);
  refresh();
  choosePlace(static_cast<int>(m_fixedPlaces.size()));
}

QStringList TYLibraryController::paths() const {
  return {m_defaults.value(pathKey).toString()};
}

QList<TYLibraryController::Place> TYLibraryController::allPlaces() const {
  QList<Place> places = m_fixedPlaces;
  QStringList own = paths();
  for (const char* key : {"componentsLibraryPath", "compositionsLibraryPath"})
    own.append(m_defaults.value(QString::fromLatin1(key)).toString());
  own.removeDuplicates();
  own.removeAll(QString());
  for (const QString& folder : std::as_const(own))
    places.append({QFileInfo(folder).fileName(), QStringLiteral("Folder"), folder});
  return places;
}

void TYLibraryController::choosePlace(int index) {
  m_places->setCurrentRow(index);
}

void TYLibraryController::refresh() {
  const Place shown = m_places->places().value(m_places->currentRow());
  m_places->setPlaces(allPlaces());
  const Place now = m_places->places().value(m_places->currentRow());
  if (now != shown) setFolder(now.folder);
}

void TYLibraryController::setFolder(const QString& folder) {
  m_model.setFolder(folder);
  m_up->setVisible(!m_places->contains(folder));
  m_folderName->setText(QFileInfo(folder).fileName());
  showContent();
}

void TYLibraryController::setShowsGrid(bool showsGrid) {
  m_defaults.setValue(showsGrid, gridKey);
  showContent();
}

bool TYLibraryController::showsGrid() const {
  return m_defaults.value(gridKey).toBool();
}

QAbstractItemView& TYLibraryController::files() const {
  if (showsGrid()) return *m_grid;
  return *m_list;
}

void TYLibraryController::showContent() {
  const bool isOwn = m_places->currentRow() >= m_fixedPlaces.size();
  if (m_model.rowCount() == 0 && isOwn)
    m_stack->setCurrentWidget(m_empty);
  else
    m_stack->setCurrentWidget(&files());
}

/// Files come and go while someone browses: what was selected stays so.
void TYLibraryController::keepSelection() {
  connect(&m_sorted, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
    m_selectedPaths.clear();
    for (const QModelIndex& row : m_list->selectionModel()->selectedRows())
      m_selectedPaths.append(pathAt(row));
  });
  connect(&m_sorted, &QAbstractItemModel::modelReset, this, [this] {
    for (int row = 0; row < m_sorted.rowCount(); ++row)
      if (const QModelIndex index = m_sorted.index(row, 0); m_selectedPaths.contains(pathAt(index)))
        m_list->selectionModel()->select(index,
                                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
  });
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
  const QModelIndex index = files().indexAt(position);
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
  menu.exec(files().viewport()->mapToGlobal(position));
}

}  // namespace library
