#pragma once

#include <QFileSystemWatcher>
#include <QWidget>

#include "playout/ValueTable.h"

class QComboBox;
class QLabel;
class QPushButton;
class QToolButton;

namespace preview {

class ElidedNote;
class FieldsModel;
class TableRows;

/// A table of values, whose rows fill in the fields one after the other. What of it fits nothing is
/// told below.
class TableStrip : public QWidget {
  Q_OBJECT

 public:
  /// The model outlives the strip.
  explicit TableStrip(FieldsModel& model, QWidget* parent = nullptr);

  /// What tells where the document is that tables lie beside; an empty path for nowhere.
  void setDocumentPath(std::function<QString()> path) { m_documentPath = std::move(path); }
  /// Where the search for a table begins: at the one that was opened last, else in the folder of
  /// the document.
  [[nodiscard]] QString startPath() const;
  void openTable(const QString& path);
  void reload();
  void close();
  [[nodiscard]] bool isOpen() const { return m_table != nullptr; }
  /// Fills in the fields that the table has columns for; those that the row has no value for, or a
  /// wrong one, get their defaults. Nothing beyond the ends.
  void goTo(qsizetype row);
  /// −1 before the first one was chosen.
  [[nodiscard]] qsizetype row() const { return m_row; }
  /// What is wrong, for a person; empty when nothing is.
  [[nodiscard]] QString problems() const;

 private:
  void build();
  void choose();
  [[nodiscard]] bool read(const QString& path);
  void findColumns();
  void showState();
  void showProblems();

  FieldsModel& m_model;
  std::shared_ptr<const playout::ValueTable> m_table;
  playout::ValueTable::Fit m_fit;
  std::function<QString()> m_documentPath;
  qsizetype m_row = -1;
  QString m_failure;
  QStringList m_wrongCells;
  bool m_hasChanged = false;  ///< the file, since it was read
  QFileSystemWatcher m_watcher;
  TableRows* m_rows;
  QPushButton* m_open;
  QComboBox* m_list;
  QToolButton* m_back;
  QToolButton* m_forward;
  QToolButton* m_reload;
  QToolButton* m_close;
  QWidget* m_file;  ///< the line about it
  ElidedNote* m_note;
  QLabel* m_problems;
};

}  // namespace preview
