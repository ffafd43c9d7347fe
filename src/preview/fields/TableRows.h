#pragma once

#include <QAbstractListModel>

#include "playout/ValueTable.h"

namespace preview {

/// The rows of a table by their titles, for a list of any length.
class TableRows : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  void setTable(std::shared_ptr<const playout::ValueTable> table);
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::shared_ptr<const playout::ValueTable> m_table;
};

}  // namespace preview
