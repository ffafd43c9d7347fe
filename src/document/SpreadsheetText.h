#pragma once

#include <QStringList>

namespace document {

/// A table as spreadsheets put it on the clipboard: lines of cells parted by tabs. Cells with tabs,
/// line ends or quotation marks stand in quotation marks, those within doubled.
class SpreadsheetText {
 public:
  [[nodiscard]] static QString write(const QList<QStringList>& lines);
  /// Any text is a table. Line ends of every system are understood.
  [[nodiscard]] static QList<QStringList> read(const QString& text);
};

}  // namespace document
