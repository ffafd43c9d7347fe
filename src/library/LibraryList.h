#pragma once

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
  void fold(bool folded);

  foundation::UserDefaults& m_defaults;
  LibraryDelegate* m_delegate;
  QList<int> m_shownColumns;
};

}  // namespace library
