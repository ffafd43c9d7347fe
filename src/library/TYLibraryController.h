#pragma once

#include <QSortFilterProxyModel>
#include <QWidget>

#include "foundation/UserDefaults.h"
#include "library/LibraryModel.h"
#include "library/PlacesView.h"

class QAbstractItemView;
class QLabel;
class QStackedWidget;
class QVBoxLayout;

namespace library {

class LibraryGrid;
class LibraryList;

/// The library of a document window: places, a search field and the files of the chosen place, as
/// rows or tiles, to be dragged onto the canvas. Documents are opened by double click, folders are
/// gone into.
class TYLibraryController : public QWidget {
  Q_OBJECT

 public:
  using Place = PlacesView::Place;

  /// The fixed places are always offered, before the user's own.
  TYLibraryController(foundation::UserDefaults& defaults, QList<Place> fixedPlaces,
                      QWidget* parent = nullptr);
  ~TYLibraryController() override;

  /// The user's folder, "imagesLibraryPath".
  [[nodiscard]] QStringList paths() const;
  /// Looks whether the user's folders are others now, or have come.
  void refresh();
  [[nodiscard]] LibraryModel& model() { return m_model; }
  /// The rows or the tiles.
  [[nodiscard]] QAbstractItemView& files() const;
  void choosePlace(int index);
  /// Tiles instead of rows; kept for the next window.
  void setShowsGrid(bool showsGrid);
  [[nodiscard]] bool showsGrid() const;

 Q_SIGNALS:
  void openRequested(const QString& documentPath);
  void addRequested(const QString& path);

 private:
  void addSearch(QVBoxLayout& column);
  void addWayUp(QVBoxLayout& column);
  void addFiles(QVBoxLayout& column);
  [[nodiscard]] QWidget* emptyPanel();
  [[nodiscard]] QList<Place> allPlaces() const;
  void setFolder(const QString& folder);
  void activate(const QModelIndex& index);
  void showMenu(const QPoint& position);
  void showContent();
  void keepSelection();
  void chooseFolder();
  [[nodiscard]] QString pathAt(const QModelIndex& index) const;

  foundation::UserDefaults& m_defaults;
  QList<Place> m_fixedPlaces;
  LibraryModel m_model;
  QSortFilterProxyModel m_sorted;
  PlacesView* m_places;
  LibraryList* m_list;
  LibraryGrid* m_grid;
  QWidget* m_empty;
  QStackedWidget* m_stack;
  QWidget* m_up;
  QLabel* m_folderName;
  QStringList m_selectedPaths;
};

}  // namespace library
