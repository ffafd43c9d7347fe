#pragma once

#include <QLabel>

class QHBoxLayout;

namespace inspector {

/// A row of a pane that edits nothing by itself: a label at the left and room for controls.
class PaneLine : public QWidget {
  Q_OBJECT

 public:
  explicit PaneLine(const QString& label, QWidget* parent = nullptr);
  void add(QWidget* control, int stretch = 0);
  /// A value that can be selected with the mouse.
  QLabel* addValue();

 private:
  QHBoxLayout* m_line;
};

}  // namespace inspector
