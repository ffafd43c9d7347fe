#pragma once

#include <QWidget>

class QVBoxLayout;

namespace widgets {
class TYPaneHeader;
}

namespace inspector {

class InspectorContext;
class InspectorRow;

/// A pane of the inspector: a head that folds it, and rows below.
class InspectorPane : public QWidget {
  Q_OBJECT

 public:
  InspectorPane(InspectorContext& context, const QString& title, QWidget* parent = nullptr);

  [[nodiscard]] widgets::TYPaneHeader& header() const { return *m_header; }
  [[nodiscard]] const QList<InspectorRow*>& rows() const { return m_rows; }
  /// Binds the rows to what is selected now; must not keep anything of what was before.
  virtual void takeSelection() {}
  /// Lets go of all objects.
  virtual void letGo();
  /// Shows current values, as long as the pane is open.
  virtual void refresh();

 protected:
  [[nodiscard]] InspectorContext& context() const { return m_context; }
  [[nodiscard]] QWidget* content() const { return m_content; }
  [[nodiscard]] QVBoxLayout* column() const { return m_column; }
  template <typename Row>
  Row* add(Row* row) {
    appendRow(row);
    return row;
  }
  void setRows(const QList<InspectorRow*>& rows) { m_rows = rows; }

 private:
  void appendRow(InspectorRow* row);

  InspectorContext& m_context;
  widgets::TYPaneHeader* m_header;
  QWidget* m_content;
  QVBoxLayout* m_column;
  QList<InspectorRow*> m_rows;
};

}  // namespace inspector
