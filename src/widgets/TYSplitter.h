#pragma once

#include <QSplitter>

namespace widgets {

/// Panels that meet in one line, which can be grabbed within seven.
class TYSplitter : public QSplitter {
  Q_OBJECT
 public:
  using QSplitter::QSplitter;

 protected:
  QSplitterHandle* createHandle() override;
};

}  // namespace widgets
