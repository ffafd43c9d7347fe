#pragma once

#include <QStringList>

namespace foundation {

/// Tables as texts: lines of cells parted by tabs, as spreadsheets put them on the clipboard, or by
/// commas or semicolons, as they save them. Cells with separators, line ends or quotation marks
/// stand in quotation marks, those within doubled.
class SeparatedText {
 public:
  struct Table {
    QList<QStringList> lines;
    /// Of the quotation mark that no other one closes, from 1; 0 when there is none. What follows
    /// it is one cell.
    qsizetype unclosedLine = 0;
  };

  [[nodiscard]] static QString write(const QList<QStringList>& lines, QChar separator = u'\t');
  /// Any text is a table. Line ends of every system are understood.
  [[nodiscard]] static Table read(const QString& text, QChar separator = u'\t');
  /// What parts the cells of the first line: tab, semicolon or comma, whichever it has most of
  /// outside quotation marks; comma where it has none.
  [[nodiscard]] static QChar separatorOf(const QString& text);
};

}  // namespace foundation
