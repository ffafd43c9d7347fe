#pragma once

#include <QSortFilterProxyModel>
#include <QWidget>

#include "foundation/UserDefaults.h"
#include "library/LibraryModel.h"

class QLabel;
class QListWidget;
class QTreeView;
class QStackedWidget;

namespace library {

class LibraryDelegate;

/// The library of a document window: places, a search field and the files of the chosen place, to
/// be dragged onto the canvas. Documents are opened by double click, folders are gone into.
class TYLibraryController : public QWidget {
  Q_OBJECT

 public:
  /// A folder that is always offered, beside the user's own.
  struct Place {
    QString title;
    QString glyph;
    QString folder;
  };

  TYLibraryController(foundation::UserDefaults& defaults, const QList<Place>& fixedPlaces,
                      QWidget* parent = nullptr);
  ~TYLibraryController() override;

  /// The user's folder, "imagesLibraryPath".
  [[nodiscard]] QStringList paths() const;
  /// Looks whether the user's folder is another one now, or has come.
  void refresh();
  [[nodiscard]] LibraryModel& model() { return m_model; }
  [[nodiscard]] QTreeView& list() const { return *m_list; }
  void choosePlace(int index);

 Q_SIGNALS:
  void openRequested(const QString& documentPath);
  void addRequested(const QString& path);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void addPlaces(const QList<Place>& fixedPlaces);
  void setFolder(const QString& folder);
  void activate(const QModelIndex& index);
  void showMenu(const QPoint& position);
  void showEmptiness();
  void fold();
  void goUp();
  [[nodiscard]] QString pathAt(const QModelIndex& index) const;

  foundation::UserDefaults& m_defaults;
  LibraryModel m_model;
  QSortFilterProxyModel m_sorted;
  LibraryDelegate* m_delegate;
  QListWidget* m_places;
  QStringList m_folders;  ///< of the places
  QTreeView* m_list;
  QStackedWidget* m_stack;
  QWidget* m_up;
  QLabel* m_folderName;
};

}  // namespace library
