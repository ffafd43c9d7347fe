#include "preview/fields/TableRows.h"

namespace preview {

void TableRows::setTable(std::shared_ptr<const playout::ValueTable> table) {
  beginResetModel();
  m_table = std::move(table);
  endResetModel();
}

int TableRows::rowCount(const QModelIndex& parent) const {
  return m_table && !parent.isValid() ? static_cast<int>(m_table->rowCount()) : 0;
}

QVariant TableRows::data(const QModelIndex& index, int role) const {
  if (!m_table || index.row() >= m_table->rowCount() || role != Qt::DisplayRole) return {};
  return QStringLiteral("%1  %2").arg(index.row() + 1).arg(m_table->title(index.row()));
}

}  // namespace preview
