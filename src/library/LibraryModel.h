#pragma once

#include <QAbstractTableModel>
#include <QFileSystemWatcher>
#include <QHash>

#include "library/LibraryEntry.h"
#include "library/ThumbnailMaker.h"

namespace library {

/// The files of one folder that can go into a graphic, and its folders, kept up to date with the
/// disk. A package is one entry. Thumbnails come when they are made.
class LibraryModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column {
    Name,
    Resolution,
    SizeOfFile,
    DateModified,
    DateCreated,
    DateAdded,
    LastOpened,
    Kind,
    Tags,
    ColumnCount
  };
  enum Role {
    PathRole = Qt::UserRole,
    SortRole,       ///< comparable values
    KindRole,       ///< LibraryKind as int
    ThumbnailRole,  ///< QImage, null until it is made
    ProblemRole     ///< why there is no picture
  };

  explicit LibraryModel(const QSize& thumbnailSize, QObject* parent = nullptr);
  ~LibraryModel() override;

  /// Lists the folder. A folder that is not there is empty; it is listed when it appears.
  void setFolder(const QString& folder);
  [[nodiscard]] const QString& folder() const { return m_folder; }
  /// Reads the folder again. Entries whose files did not change keep their thumbnails.
  void reload();

  [[nodiscard]] const LibraryEntry& entry(const QModelIndex& index) const {
    return m_entries.at(index.row());
  }
  /// The identifiers by which columns are kept in settings.
  [[nodiscard]] static QString columnIdentifier(Column column);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  /// Files can be dragged, folders cannot.
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QStringList mimeTypes() const override;
  [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  struct Made {
    QDateTime modified;
    Thumbnail thumbnail;
  };
  void thumbnailMade(const QString& path, const Thumbnail& thumbnail);
  [[nodiscard]] QString text(const LibraryEntry& entry, int column) const;
  [[nodiscard]] QVariant sortValue(const LibraryEntry& entry, int column) const;
  [[nodiscard]] QVariant thumbnail(const LibraryEntry& entry) const;

  QString m_folder;
  QList<LibraryEntry> m_entries;
  QHash<QString, Made> m_made;
  mutable ThumbnailMaker m_maker;
  QFileSystemWatcher m_watcher;
};

}  // namespace library
