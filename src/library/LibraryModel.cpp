#include "library/LibraryModel.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMimeData>
#include <QUrl>

namespace library {

namespace {

struct ColumnName {
  const char16_t* identifier;
  const char* title;
};

constexpr std::array<ColumnName, LibraryModel::ColumnCount> columns{{
    {u"name", QT_TRANSLATE_NOOP("library::LibraryModel", "Name")},
    {u"resolution", QT_TRANSLATE_NOOP("library::LibraryModel", "Resolution")},
    {u"sizeOfFile", QT_TRANSLATE_NOOP("library::LibraryModel", "Size")},
    {u"dateModified", QT_TRANSLATE_NOOP("library::LibraryModel", "Date")},
    {u"dateCreated", QT_TRANSLATE_NOOP("library::LibraryModel", "Date Created")},
    {u"dateAdded", QT_TRANSLATE_NOOP("library::LibraryModel", "Date Added")},
    {u"lastOpened", QT_TRANSLATE_NOOP("library::LibraryModel", "Last Opened")},
    {u"kind", QT_TRANSLATE_NOOP("library::LibraryModel", "Kind")},
    {u"tags", QT_TRANSLATE_NOOP("library::LibraryModel", "Tags")},
}};

QString dateText(const QDateTime& date) {
  if (!date.isValid()) return {};
  const bool isThisYear = date.date().year() == QDate::currentDate().year();
  return QLocale().toString(date.date(),
                            isThisYear ? QStringLiteral("d MMM") : QStringLiteral("MMM yyyy"));
}

}  // namespace

LibraryModel::LibraryModel(const QSize& thumbnailSize, QObject* parent)
    : QAbstractTableModel(parent), m_maker(thumbnailSize) {
  connect(&m_maker, &ThumbnailMaker::made, this, &LibraryModel::thumbnailMade);
  connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &LibraryModel::reload);
}

LibraryModel::~LibraryModel() = default;

void LibraryModel::setFolder(const QString& folder) {
  if (!m_watcher.directories().isEmpty()) m_watcher.removePaths(m_watcher.directories());
  m_folder = folder;
  m_made.clear();
  // Of a folder that is not there, the nearest one above tells when it comes.
  QString watched = folder;
  while (!watched.isEmpty() && !QFileInfo(watched).isDir() && QFileInfo(watched).path() != watched)
    watched = QFileInfo(watched).path();
  if (!watched.isEmpty()) m_watcher.addPath(watched);
  reload();
}

void LibraryModel::reload() {
  if (!m_watcher.directories().contains(m_folder) && QFileInfo(m_folder).isDir())
    m_watcher.addPath(m_folder);
  beginResetModel();
  m_maker.cancelRequests();
  m_entries.clear();
  const QDir folder(m_folder);
  const auto infos = m_folder.isEmpty()
                         ? QFileInfoList()
                         : folder.entryInfoList(QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot);
  for (const QFileInfo& info : infos) {
    if (!info.isDir() && !LibraryEntry::isListed(info.fileName())) continue;
    LibraryEntry entry = LibraryEntry::of(info.absoluteFilePath());
    const auto made = m_made.constFind(entry.path);
    if (made != m_made.constEnd() && made->modified == entry.dateModified) {
      if (entry.resolution.isEmpty()) entry.resolution = made->thumbnail.resolution;
    } else {
      m_made.remove(entry.path);
    }
    m_entries.append(std::move(entry));
  }
  endResetModel();
}

QString LibraryModel::columnIdentifier(Column column) {
  return QString::fromUtf16(columns[column].identifier);
}

int LibraryModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int LibraryModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ColumnCount;
}

QVariant LibraryModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount) return {};
  const auto column = static_cast<size_t>(section);
  if (role == Qt::DisplayRole) return tr(columns[column].title);
  if (role == Qt::TextAlignmentRole && section == SizeOfFile)
    return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QString LibraryModel::text(const LibraryEntry& entry, int column) const {
  switch (column) {
    case Name:
      return entry.name;
    case Resolution:
      return entry.resolution.isEmpty() ? QString()
                                        : QStringLiteral("%1 × %2")
                                              .arg(entry.resolution.width())
                                              .arg(entry.resolution.height());
    case SizeOfFile:
      return entry.kind == LibraryKind::Folder
                 ? QString()
                 : QLocale().formattedDataSize(entry.sizeOfFile, 0,
                                               QLocale::DataSizeTraditionalFormat);
    case DateModified:
      return dateText(entry.dateModified);
    case DateCreated:
      return dateText(entry.dateCreated);
    case DateAdded:
      return dateText(entry.dateAdded);
    case LastOpened:
      return dateText(entry.lastOpened);
    case Kind:
      return entry.kindText();
    case Tags:
      return entry.tags.join(QStringLiteral(", "));
    default:
      return {};
  }
}

QVariant LibraryModel::sortValue(const LibraryEntry& entry, int column) const {
  switch (column) {
    case Resolution:
      return qint64{entry.resolution.width()} * entry.resolution.height();
    case SizeOfFile:
      return entry.sizeOfFile;
    case DateModified:
      return entry.dateModified;
    case DateCreated:
      return entry.dateCreated;
    case DateAdded:
      return entry.dateAdded;
    case LastOpened:
      return entry.lastOpened;
    default:
      return text(entry, column);
  }
}

QVariant LibraryModel::thumbnail(const LibraryEntry& entry) const {
  const auto made = m_made.constFind(entry.path);
  if (made != m_made.constEnd()) return made->thumbnail.picture;
  // Only what is looked at is made.
  if (entry.kind != LibraryKind::Folder) m_maker.request(entry.path);
  return QImage();
}

QVariant LibraryModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= m_entries.size()) return {};
  const LibraryEntry& entry = m_entries.at(index.row());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
      return text(entry, index.column());
    case Qt::TextAlignmentRole:
      if (index.column() == SizeOfFile)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
      return {};
    case Qt::ToolTipRole:
      return QDir::toNativeSeparators(entry.path);
    case PathRole:
      return entry.path;
    case SortRole:
      return sortValue(entry, index.column());
    case KindRole:
      return static_cast<int>(entry.kind);
    case ThumbnailRole:
      return thumbnail(entry);
    case ProblemRole:
      return m_made.value(entry.path).thumbnail.problem;
    default:
      return {};
  }
}

void LibraryModel::thumbnailMade(const QString& path, const Thumbnail& thumbnail) {
  for (qsizetype row = 0; row < m_entries.size(); ++row) {
    LibraryEntry& entry = m_entries[row];
    if (entry.path != path) continue;
    m_made.insert(path, {entry.dateModified, thumbnail});
    if (entry.resolution.isEmpty()) entry.resolution = thumbnail.resolution;
    const int at = static_cast<int>(row);
    Q_EMIT dataChanged(index(at, 0), index(at, ColumnCount - 1));
    return;
  }
}

Qt::ItemFlags LibraryModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  return entry(index).kind == LibraryKind::Folder ? flags : flags | Qt::ItemIsDragEnabled;
}

QStringList LibraryModel::mimeTypes() const {
  return {QStringLiteral("text/uri-list")};
}

QMimeData* LibraryModel::mimeData(const QModelIndexList& indexes) const {
  QList<QUrl> urls;
  for (const QModelIndex& index : indexes)
    if (index.column() == Name && entry(index).kind != LibraryKind::Folder)
      urls.append(QUrl::fromLocalFile(entry(index).path));
  if (urls.isEmpty()) return nullptr;
  auto* data = new QMimeData;
  data->setUrls(urls);
  return data;
}

}  // namespace library
