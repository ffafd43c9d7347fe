#pragma once

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace preview {

/// How the parts above the fields are laid out: a column, and in its first line a label that stands
/// where those of the fields do.
struct LabelledLine {
  static constexpr int height = 24;

  /// Both belong to the part. The line is in the column already.
  LabelledLine(QWidget& part, const QString& label);

  QVBoxLayout* column;
  QHBoxLayout* line;
};

}  // namespace preview
