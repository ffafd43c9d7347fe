#include "cli/edit/ScriptWords.h"

#include <QRegularExpression>

#include "cli/edit/NearNames.h"

namespace cli {

using foundation::failure;
using foundation::Result;

namespace {

/// Reads one line.
class LineReader {
 public:
  LineReader(const QString& line, const ScriptNames& names) : m_line(line), m_names(names) {}

  Result<QStringList> read() {
    while (m_at < m_line.size()) {
      if (auto taken = takeNext(); !taken) return tl::unexpected(taken.error());
    }
    if (!m_quote.isNull())
      return failure(QStringLiteral("the quotation mark %1 is not closed").arg(m_quote));
    endWord();
    return m_words;
  }

 private:
  Result<void> takeNext() {
    const QChar c = m_line[m_at];
    if (m_quote == u'\'') return takeQuoted(c);
    if (c == u'\\') return takeEscaped();
    if (c == u'$') return takeName();
    if (!m_quote.isNull()) return takeQuoted(c);
    if (c.isSpace()) {
      endWord();
    } else if (c == u'"' || c == u'\'') {
      m_quote = c;
      m_isWord = true;
    } else if (c == u'#' && beginsComment()) {
      m_at = m_line.size();
      return {};
    } else {
      add(c);
    }
    ++m_at;
    return {};
  }

  [[nodiscard]] bool beginsComment() const {
    if (m_isWord) return false;
    return m_words.isEmpty() || m_at + 1 == m_line.size() || m_line[m_at + 1].isSpace();
  }

  Result<void> takeQuoted(QChar c) {
    if (c == m_quote)
      m_quote = {};
    else
      add(c);
    ++m_at;
    return {};
  }

  Result<void> takeEscaped() {
    if (++m_at == m_line.size()) return failure(QStringLiteral("nothing follows the last \\"));
    const QChar c = m_line[m_at++];
    add(!m_quote.isNull() && c == u'n' ? QChar(u'\n') : c);
    return {};
  }

  Result<void> takeName() {
    static const QRegularExpression pattern(
        QStringLiteral("\\$(?:\\{([A-Za-z_][A-Za-z0-9_]*)\\}|([A-Za-z_][A-Za-z0-9_]*))"));
    const QRegularExpressionMatch match =
        pattern.match(m_line, m_at, QRegularExpression::NormalMatch,
                      QRegularExpression::AnchorAtOffsetMatchOption);
    if (!match.hasMatch())
      return failure(QStringLiteral("a name must follow $; \\$ is the character itself"));
    const QString name = match.captured(1) + match.captured(2);
    const auto found = m_names.find(name);
    if (found == m_names.end())
      return failure(
          QStringLiteral("there is no name '%1'; %2").arg(name, nearNames(name, m_names.keys())));
    m_at = match.capturedEnd();
    const bool isWhole = !m_isWord && (m_at == m_line.size() || m_line[m_at].isSpace());
    if (isWhole) {
      m_words += *found;
    } else {
      m_word += found->join(u' ');
      m_isWord = true;
    }
    return {};
  }

  void add(QChar c) {
    m_word += c;
    m_isWord = true;
  }

  void endWord() {
    if (m_isWord) m_words.append(std::exchange(m_word, {}));
    m_isWord = false;
  }

  const QString& m_line;
  const ScriptNames& m_names;
  QStringList m_words;
  QString m_word;
  bool m_isWord = false;  ///< a word has begun, be it empty
  QChar m_quote;
  qsizetype m_at = 0;
};

}  // namespace

Result<QStringList> scriptWords(const QString& line, const ScriptNames& names) {
  return LineReader(line, names).read();
}

bool isScriptName(const QString& text) {
  static const QRegularExpression pattern(
      QRegularExpression::anchoredPattern(QStringLiteral("[A-Za-z_][A-Za-z0-9_]*")));
  return pattern.match(text).hasMatch();
}

}  // namespace cli
