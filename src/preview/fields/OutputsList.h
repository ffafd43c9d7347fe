#pragma once

#include <QWidget>

#include "preview/FramePump.h"

class QLabel;
class QVBoxLayout;

namespace widgets {
class TYPaneHeader;
}

namespace preview {

class StatusLamp;

/// What the graphic says of itself: switches as lamps, anything else as its value.
class OutputsList : public QWidget {
  Q_OBJECT

 public:
  explicit OutputsList(QWidget* parent = nullptr);

  void setPorts(const std::vector<runtime::PortAttributes>& ports);
  /// In the order of the ports.
  void setValues(const std::vector<runtime::Value>& values);

 private:
  struct Row {
    runtime::PortAttributes port;
    StatusLamp* lamp;  ///< of a switch; none otherwise
    QLabel* value;
  };
  void addRow(const runtime::PortAttributes& port, QVBoxLayout& column);

  widgets::TYPaneHeader* m_header;
  QWidget* m_content = nullptr;
  std::vector<Row> m_rows;
};

}  // namespace preview
