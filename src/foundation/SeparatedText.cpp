#include "foundation/SeparatedText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace foundation {

namespace {

bool endsLine(QChar character) {
  return character == u'\n' || character == u'\r';
}

QString quoted(const QString& cell, QChar separator) {
  const bool needsQuotes = std::any_of(cell.begin(), cell.end(), [&](QChar character) {
    return character == separator || endsLine(character) || character == u'"';
  });
  return needsQuotes ? u'"' + QString(cell).replace(u'"', QStringLiteral("\"\"")) + u'"' : cell;
}

/// Goes through a text once, taking over whole runs of ordinary characters.
class CellReader {
 public:
  CellReader(const QString& text, QChar separator) : m_text(text), m_separator(separator) {}

  SeparatedText::Table read() {
    while (m_at < m_text.size()) {
      const QChar character = m_text.at(m_at);
      if (character == u'"' && m_cell.isEmpty()) {
        takeQuoted();
      } else if (character == m_separator) {
        ++m_at;
        endCell();
      } else if (endsLine(character)) {
        m_at += QStringView(m_text).mid(m_at).startsWith(u"\r\n") ? 2 : 1;
        endLine();
      } else {
        takePlain();
      }
    }
    if (!m_cell.isEmpty() || !m_cells.isEmpty()) endLine();
    return std::move(m_table);
  }

 private:
  void takePlain() {
    const qsizetype start = m_at++;
    while (m_at < m_text.size() && m_text.at(m_at) != m_separator && !endsLine(m_text.at(m_at)))
      ++m_at;
    m_cell += QStringView(m_text).mid(start, m_at - start);
  }

  void takeQuoted() {
    const qsizetype opening = m_at++;
    for (;;) {
      const qsizetype mark = m_text.indexOf(u'"', m_at);
      const qsizetype end = mark < 0 ? m_text.size() : mark;
      m_cell += QStringView(m_text).mid(m_at, end - m_at);
      m_at = mark < 0 ? end : mark + 1;
      if (mark < 0) m_table.unclosedLine = lineOf(opening);
      if (mark < 0 || m_at >= m_text.size() || m_text.at(m_at) != u'"') return;
      m_cell += m_text.at(m_at++);
    }
  }

  [[nodiscard]] qsizetype lineOf(qsizetype position) const {
    return 1 + std::max(QStringView(m_text).left(position).count(u'\n'),
                        QStringView(m_text).left(position).count(u'\r'));
  }

  void endCell() { m_cells.append(std::exchange(m_cell, {})); }
  void endLine() {
    endCell();
    m_table.lines.append(std::exchange(m_cells, {}));
  }

  const QString& m_text;
  QChar m_separator;
  qsizetype m_at = 0;
  QString m_cell;
  QStringList m_cells;
  SeparatedText::Table m_table;
};

}  // namespace

QString SeparatedText::write(const QList<QStringList>& lines, QChar separator) {
  QString text;
  for (const QStringList& line : lines) {
    QStringList cells;
    for (const QString& cell : line) cells.append(quoted(cell, separator));
    text += cells.join(separator) + u'\n';
  }
  return text;
}

SeparatedText::Table SeparatedText::read(const QString& text, QChar separator) {
  return CellReader(text, separator).read();
}

QChar SeparatedText::separatorOf(const QString& text) {
  static constexpr std::array<QChar, 3> separators{u'\t', u';', u','};
  std::array<qsizetype, 3> counts{};
  bool isQuoted = false;
  for (const QChar character : text) {
    if (character == u'"') isQuoted = !isQuoted;
    if (isQuoted) continue;
    if (endsLine(character)) break;
    for (std::size_t i = 0; i < separators.size(); ++i)
      if (character == separators[i]) ++counts[i];
  }
  const auto most = std::max_element(counts.begin(), counts.end());
  return *most == 0 ? u',' : separators[static_cast<std::size_t>(most - counts.begin())];
}

}  // namespace foundation
