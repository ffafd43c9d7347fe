#pragma once

#include <QHash>
#include <QTreeView>

#include "foundation/UserDefaults.h"

namespace library {

class LibraryDelegate;

/// The files as rows. Which columns there are, how wide and in which order is the user's, and kept;
/// where there is no room they fold into a second line under the name.
class LibraryList : public QTreeView {
  Q_OBJECT

 public:
  explicit LibraryList(foundation::UserDefaults& defaults, QWidget* parent = nullptr);
  void setModel(QAbstractItemModel* model) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void setStandardColumns();
  void restoreColumns();
  void saveColumns();
  void showColumnMenu(const QPoint& position);
  /// Of the user's choice, as many as leave the name its room.
  [[nodiscard]] QList<int> fittingColumns() const;
  void fold(bool folded);

  foundation::UserDefaults& m_defaults;
  LibraryDelegate* m_delegate;
  QList<int> m_shownColumns;  ///< the user's choice
  QHash<int, int> m_widths;   ///< pixels, also of columns that have no room now
};

}  // namespace library
