#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace inspector {

class InspectorContext;
class InspectorPane;

/// A column of panes that scrolls. Only the page that is seen follows the selection; the others
/// catch up when they are shown.
class InspectorPage : public QScrollArea {
  Q_OBJECT

 public:
  explicit InspectorPage(InspectorContext& context, QWidget* parent = nullptr);

  void addPane(InspectorPane* pane);
  /// Brings the keyboard's way into the order of the rows.
  void orderTabs();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void takeSelection();
  void refresh();

  InspectorContext& m_context;
  QVBoxLayout* m_column;
  QList<InspectorPane*> m_panes;
  bool m_selectionIsDue = true;
};

}  // namespace inspector
