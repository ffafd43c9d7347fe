#include "document/SpreadsheetText.h"

#include <algorithm>
#include <utility>

namespace document {

namespace {

QString quoted(const QString& cell) {
  const bool needsQuotes = std::any_of(cell.begin(), cell.end(), [](QChar character) {
    return character == u'\t' || character == u'\n' || character == u'\r' || character == u'"';
  });
  return needsQuotes ? u'"' + QString(cell).replace(u'"', QStringLiteral("\"\"")) + u'"' : cell;
}

}  // namespace

QString SpreadsheetText::write(const QList<QStringList>& lines) {
  QString text;
  for (const QStringList& line : lines) {
    QStringList cells;
    for (const QString& cell : line) cells.append(quoted(cell));
    text += cells.join(u'\t') + u'\n';
  }
  return text;
}

QList<QStringList> SpreadsheetText::read(const QString& text) {
  QList<QStringList> lines;
  QStringList line;
  QString cell;
  bool isQuoted = false;
  const auto endLine = [&] {
    line.append(std::exchange(cell, {}));
    lines.append(std::exchange(line, {}));
  };
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar character = text.at(i);
    const QChar next = i + 1 < text.size() ? text.at(i + 1) : QChar();
    if (isQuoted && character == u'"' && next == u'"') {
      cell += text.at(++i);
    } else if (character == u'"' && (isQuoted || cell.isEmpty())) {
      isQuoted = !isQuoted;
    } else if (isQuoted) {
      cell += character;
    } else if (character == u'\t') {
      line.append(std::exchange(cell, {}));
    } else if (character == u'\n' || character == u'\r') {
      if (character == u'\r' && next == u'\n') ++i;
      endLine();
    } else {
      cell += character;
    }
  }
  if (!cell.isEmpty() || !line.isEmpty()) endLine();
  return lines;
}

}  // namespace document
