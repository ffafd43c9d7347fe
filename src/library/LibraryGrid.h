#pragma once

#include <QListView>

namespace library {

/// The files as tiles: a larger picture with the name below.
class LibraryGrid : public QListView {
  Q_OBJECT

 public:
  explicit LibraryGrid(QWidget* parent = nullptr);
};

}  // namespace library
