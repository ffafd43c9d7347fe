#include "library/LibraryList.h"

#include <QHeaderView>
#include <QMenu>
#include <QResizeEvent>

#include "library/LibraryDelegate.h"
#include "library/LibraryModel.h"

namespace library {

namespace {

constexpr int foldBelow = 300;
constexpr int leastName = 156;  ///< with its thumbnail
constexpr int standardWidth = 80;
const QString columnsKey = QStringLiteral("libraryColumns");

}  // namespace

LibraryList::LibraryList(foundation::UserDefaults& defaults, QWidget* parent)
    : QTreeView(parent), m_defaults(defaults), m_delegate(new LibraryDelegate(this)) {
  setAccessibleName(tr("Files"));
  setItemDelegate(m_delegate);
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setFrameShape(QFrame::NoFrame);
  setSelectionMode(ExtendedSelection);
  setDragEnabled(true);
  setDragDropMode(DragOnly);
  setDefaultDropAction(Qt::CopyAction);
  setContextMenuPolicy(Qt::CustomContextMenu);
  header()->setStretchLastSection(false);
  header()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(header(), &QWidget::customContextMenuRequested, this, &LibraryList::showColumnMenu);
}

void LibraryList::setModel(QAbstractItemModel* model) {
  QTreeView::setModel(model);
  setStandardColumns();
  restoreColumns();
  header()->setSectionResizeMode(LibraryModel::Name, QHeaderView::Stretch);
  setSortingEnabled(true);
  const auto save = [this] { saveColumns(); };
  connect(header(), &QHeaderView::sectionMoved, this, save);
  connect(header(), &QHeaderView::sortIndicatorChanged, this, save);
  connect(header(), &QHeaderView::sectionResized, this, [this](int column, int, int size) {
    // The name takes what the others leave; that is no choice of the user's.
    if (column == LibraryModel::Name || size <= 0) return;
    m_widths.insert(column, size);
    saveColumns();
  });
}

void LibraryList::setStandardColumns() {
  m_shownColumns = {LibraryModel::Resolution, LibraryModel::SizeOfFile, LibraryModel::DateModified,
                    LibraryModel::Kind};
  setColumnWidth(LibraryModel::Resolution, 92);
  setColumnWidth(LibraryModel::SizeOfFile, 58);
  setColumnWidth(LibraryModel::DateModified, 58);
  setColumnWidth(LibraryModel::DateCreated, 80);
  setColumnWidth(LibraryModel::DateAdded, 80);
  setColumnWidth(LibraryModel::LastOpened, 80);
  setColumnWidth(LibraryModel::Kind, 76);
  header()->setSortIndicator(LibraryModel::Name, Qt::AscendingOrder);
}

void LibraryList::restoreColumns() {
  const QVariantMap kept = m_defaults.value(columnsKey).toMap();
  if (!kept.isEmpty()) {
    header()->restoreState(kept.value(QStringLiteral("header")).toByteArray());
    m_shownColumns.clear();
    const QStringList shown = kept.value(QStringLiteral("shown")).toStringList();
    for (int column = 1; column < LibraryModel::ColumnCount; ++column)
      if (shown.contains(LibraryModel::columnIdentifier(static_cast<LibraryModel::Column>(column))))
        m_shownColumns.append(column);
  }
  for (int column = 1; column < LibraryModel::ColumnCount; ++column)
    if (const int size = header()->sectionSize(column); size > 0) m_widths.insert(column, size);
  fold(m_delegate->isFolded());
}

void LibraryList::saveColumns() {
  if (m_delegate->isFolded()) return;
  QStringList shown;
  for (const int column : std::as_const(m_shownColumns))
    shown.append(LibraryModel::columnIdentifier(static_cast<LibraryModel::Column>(column)));
  m_defaults.setValue(QVariantMap{{QStringLiteral("header"), header()->saveState()},
                                  {QStringLiteral("shown"), shown}},
                      columnsKey);
}

void LibraryList::showColumnMenu(const QPoint& position) {
  QMenu menu(this);
  for (int column = 1; column < LibraryModel::ColumnCount; ++column) {
    QAction* action =
        menu.addAction(model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    action->setCheckable(true);
    action->setChecked(m_shownColumns.contains(column));
    connect(action, &QAction::toggled, this, [this, column](bool shown) {
      if (shown)
        m_shownColumns.append(column);
      else
        m_shownColumns.removeAll(column);
      fold(m_delegate->isFolded());
      saveColumns();
    });
  }
  menu.exec(header()->mapToGlobal(position));
}

void LibraryList::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  if (model() && event->oldSize().width() != width()) fold(width() < foldBelow);
}

QList<int> LibraryList::fittingColumns() const {
  // What tells least goes first where there is no room for all.
  static constexpr int byWorth[] = {LibraryModel::Resolution,  LibraryModel::Kind,
                                    LibraryModel::SizeOfFile,  LibraryModel::DateModified,
                                    LibraryModel::Tags,        LibraryModel::LastOpened,
                                    LibraryModel::DateCreated, LibraryModel::DateAdded};
  QList<int> fitting;
  int left = viewport()->width() - leastName;
  for (const int column : byWorth) {
    if (!m_shownColumns.contains(column)) continue;
    left -= m_widths.value(column, standardWidth);
    if (left < 0) break;
    fitting.append(column);
  }
  return fitting;
}

void LibraryList::fold(bool folded) {
  m_delegate->setFolded(folded);
  const QList<int> shown = folded ? QList<int>() : fittingColumns();
  for (int column = 1; column < LibraryModel::ColumnCount; ++column)
    setColumnHidden(column, !shown.contains(column));
  header()->setHidden(folded);
  doItemsLayout();
}

}  // namespace library
